// Keeps application settings as a Tavo::ObjectState, writes them as XML in the typed dialect with a small
// TavoXML::TypeInfoProvider, reads the text back into a new state and prints it. The typed dialect keeps
// kinds; it trims strings, reads integers in 32 bits and refuses an integer zero (see the README's table
// of losses), so these settings avoid those values.
#include "TavoRoot/ObjectState.hpp"
#include "TavoXMLUtils/TavoXMLUtils.hpp"
#include "TavoXMLUtils/objectstate/ConvertToObjectState.hpp"
#include "TavoXMLUtils/objectstate/CreateFromObjectState.hpp"
#include "TavoXMLUtils/objectstate/TypeInfoProvider.hpp"

#include <iostream>
#include <string>

namespace {

// <field type="...">value</field>; list elements are <item type="...">.
class SettingsVocabulary : public TavoXML::TypeInfoProvider {
public:
    char const* GetTypeAttributeName() const override { return "type"; }
    char const* GetBoolTypeName() const override { return "bool"; }
    char const* GetIntTypeName() const override { return "int"; }
    char const* GetUIntTypeName() const override { return "uint"; }
    char const* GetRealTypeName() const override { return "real"; }
    char const* GetStringTypeName() const override { return "string"; }
    char const* GetObjectTypeName() const override { return "group"; }
    char const* GetListTypeName() const override { return "list"; }
    char const* GetListValueTag() const override { return "item"; }
};

Tavo::ObjectState MakeSettings() {
    Tavo::ObjectState settings;
    settings.AddString("user", "Ada").AddString("theme", "dark").AddReal("volume", 0.75);
    Tavo::ObjectState& window = settings.AddObject("window");
    window.AddUInt("width", 1280).AddUInt("height", 800).AddInt("left", -8).AddBool("maximized", false);
    settings.AddList("recent").PushString("/home/ada/notes.txt").PushString("/home/ada/plan.xml");
    Tavo::ObjectState::List& shortcuts = settings.AddList("shortcuts");
    shortcuts.PushObject().AddString("action", "save").AddString("keys", "Ctrl+S");
    shortcuts.PushObject().AddString("action", "quit").AddString("keys", "Ctrl+Q");
    return settings;
}

void PrintValue(Tavo::ObjectState::Value const& value, std::string const& indent);

void PrintState(Tavo::ObjectState const& state, std::string const& indent) {
    for (Tavo::ObjectState::Field const& field : state) {
        std::cout << indent << field.name.Str() << ": ";
        PrintValue(field.value, indent);
    }
}

void PrintValue(Tavo::ObjectState::Value const& value, std::string const& indent) {
    using Kind = Tavo::ObjectState::Value::Kind;
    switch (value.GetKind()) {
        case Kind::Bool:
            std::cout << (value.GetBool() ? "true" : "false") << " (bool)\n";
            break;
        case Kind::Int:
            std::cout << value.GetInt() << " (int)\n";
            break;
        case Kind::UInt:
            std::cout << value.GetUInt() << " (uint)\n";
            break;
        case Kind::Real:
            std::cout << value.GetReal() << " (real)\n";
            break;
        case Kind::String:
            std::cout << '"' << Tavo::ToUTF8String(value.GetString()) << "\" (string)\n";
            break;
        case Kind::Object:
            std::cout << "group\n";
            PrintState(value.GetObject(), indent + "  ");
            break;
        case Kind::List:
            std::cout << "list of " << value.GetList().GetSize() << "\n";
            for (Tavo::ObjectState::Value const& element : value.GetList()) {
                std::cout << indent << "  - ";
                PrintValue(element, indent + "    ");
            }
            break;
    }
}

} // namespace

int main() {
    try {
        Tavo::ObjectState const settings = MakeSettings();
        SettingsVocabulary const vocabulary;

        Tavo::UniString text;
        TavoXML::CreateFromObjectState(settings, text, &vocabulary);
        std::cout << "Settings as XML:\n" << Tavo::ToUTF8String(text) << "\n\n";

        Tavo::ObjectState readBack;
        if (TavoXML::ConvertToObjectState(text, readBack, &vocabulary) != Tavo::NoError) {
            std::cerr << "The settings could not be read back.\n";
            return 1;
        }
        std::cout << "Read back:\n";
        PrintState(readBack, "  ");
        bool const same = readBack == settings;
        std::cout << "\nThe state read back " << (same ? "equals" : "differs from") << " the one written.\n";
        return same ? 0 : 1;
    } catch (Tavo::TavoException const& exception) {
        std::cerr << "Failed: " << Tavo::ToUTF8String(exception.GetMessage()) << '\n';
    } catch (std::exception const& exception) {
        std::cerr << "Failed: " << exception.what() << '\n';
    } catch (...) {
        // Xerces-C++'s number exceptions of the typed dialect, for one.
        std::cerr << "Failed while converting the settings.\n";
    }
    return 1;
}
