// libFuzzer target of the object-state bridge. The first byte picks the case:
//  - 0 to 4: the rest is an XML document, read by EnumerateXML and by ConvertToObjectState without a
//    provider and with providers of both GetTagContent() kinds, homogeneous or not. Only the typed
//    dialect may throw, and only Xerces-C++'s number exceptions or XMLObjectStateException; a walk that
//    returns must have balanced its entries and exits and sent no name inside a list.
//  - 5 and above: the rest drives the making of a random state, which is written in the plain dialect,
//    read back, and must keep its structure (names, nesting, kinds of containers, list sizes).
#include "TavoRoot/ObjectState.hpp"
#include "TavoRoot/UniString.hpp"
#include "TavoXMLUtils/interface/TavoXMLChannelGuards.hpp"
#include "TavoXMLUtils/interface/TavoXMLIChannelFactories.hpp"
#include "TavoXMLUtils/objectstate/ConvertToObjectState.hpp"
#include "TavoXMLUtils/objectstate/CreateFromObjectState.hpp"
#include "TavoXMLUtils/objectstate/EnumerateXML.hpp"
#include "TavoXMLUtils/objectstate/ObjectStateException.hpp"
#include "TavoXMLUtils/objectstate/TypeInfoProvider.hpp"
#include "TavoXMLUtils/reader/TavoXMLDOMReader.hpp"

#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLException.hpp>
#include <xercesc/util/XMLNetAccessor.hpp>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

class FuzzProvider : public TavoXML::TypeInfoProvider {
public:
    FuzzProvider(int tagContent, bool homogeneous) : tagContent(tagContent), homogeneous(homogeneous) {}
    bool AreListsHomogeneous() const override { return homogeneous; }
    int GetTagContent() const override { return tagContent; }
    char const* GetTypeAttributeName() const override { return "t"; }
    char const* GetBoolTypeName() const override { return "b"; }
    char const* GetIntTypeName() const override { return "i"; }
    char const* GetUIntTypeName() const override { return "u"; }
    char const* GetRealTypeName() const override { return "r"; }
    char const* GetStringTypeName() const override { return "s"; }
    char const* GetObjectTypeName() const override { return "o"; }
    char const* GetListTypeName() const override { return "l"; }
    char const* GetListValueTag() const override { return "v"; }
    char const* GetListSubtypeAttribute() const override { return "st"; }

private:
    int tagContent;
    bool homogeneous;
};

[[noreturn]] void Fail(char const* what) {
    std::fprintf(stderr, "fuzz_objectstate: %s\n", what);
    std::abort();
}

// Checks the shape of the event stream while it comes.
class CheckingProcessor : public XMLContentProcessor {
public:
    using XMLContentProcessor::XMLContentProcessor;
    void NameFound(Tavo::UniString const&) override {
        if (!open.empty() && open.back()) {
            Fail("a name inside a list");
        }
    }
    void ObjectEntered() override { open.push_back(false); }
    void ObjectExited() override { Exit(false); }
    void ListEntered() override { open.push_back(true); }
    void ListExited() override { Exit(true); }
    bool Balanced() const { return open.empty(); }

private:
    void Exit(bool list) {
        if (open.empty() || open.back() != list) {
            Fail("an exit without its entry");
        }
        open.pop_back();
    }
    std::vector<bool> open;
};

void ReadDocument(std::uint8_t const* data, std::size_t size, TavoXML::TypeInfoProvider const* provider) {
    Tavo::XMLIChannel* channel = TavoXML::CreateXMLIChannelFromMemory(
        data, static_cast<unsigned int>(size), Tavo::XMLNoTopLevelTag, TavoXML::ReturnNullOnError);
    TavoXML::XMLIChannelGuard const guard(&channel);
    if (!channel) {
        return;
    }
    xercesc::DOMNode const* root = static_cast<TavoXML::DOMReader*>(channel)->GetActualNode();
    try {
        CheckingProcessor processor(provider);
        EnumerateXML(root, processor);
        if (!processor.Balanced()) {
            Fail("entries without exits after a normal return");
        }
    } catch (xercesc::XMLException const&) {
        if (!provider) {
            Fail("the plain dialect threw");
        }
    } catch (TavoXML::XMLObjectStateException const&) {
        if (!provider) {
            Fail("the plain dialect threw");
        }
    }
    Tavo::ObjectState state;
    try {
        TavoXML::ConvertToObjectState(root, state, provider);
    } catch (xercesc::XMLException const&) {
    } catch (TavoXML::XMLObjectStateException const&) {
    }
}

// Reads the fuzzer's bytes as the choices of a random state.
class Choices {
public:
    Choices(std::uint8_t const* data, std::size_t size) : data(data), size(size) {}
    unsigned int Next(unsigned int bound) { return position < size ? data[position++] % bound : 0; }
    bool Done() const { return position >= size; }

private:
    std::uint8_t const* data;
    std::size_t size;
    std::size_t position = 0;
};

constexpr char const* gNames[] = {"a", "b", "name", "x1", "list", "item_2"};
constexpr char const* gWords[] = {"x", "true", "12", "-3", "1.5", "1e5", " padded ", "0", "a b"};

void FillList(Choices& choices, Tavo::ObjectState::List& list, int depth);

// A value of any kind; structures are never empty, since the plain dialect reads an empty one as text.
void FillObject(Choices& choices, Tavo::ObjectState& object, int depth) {
    unsigned int const count = 1 + choices.Next(4);
    for (unsigned int field = 0; field < count; ++field) {
        char const* name = gNames[choices.Next(6)];
        switch (choices.Next(depth < 8 ? 7 : 5)) {
            case 0:
                object.AddBool(name, choices.Next(2) == 0);
                break;
            case 1:
                object.AddInt(name, -static_cast<long long>(choices.Next(200)));
                break;
            case 2:
                object.AddUInt(name, choices.Next(200));
                break;
            case 3:
                object.AddReal(name, choices.Next(100) / 8.0);
                break;
            case 4:
                object.AddString(name, gWords[choices.Next(9)]);
                break;
            case 5:
                FillObject(choices, object.AddObject(name), depth + 1);
                break;
            default:
                FillList(choices, object.AddList(name), depth + 1);
                break;
        }
    }
}

void FillList(Choices& choices, Tavo::ObjectState::List& list, int depth) {
    unsigned int const count = 1 + choices.Next(4);
    for (unsigned int element = 0; element < count; ++element) {
        switch (choices.Next(depth < 8 ? 4 : 2)) {
            case 0:
                list.PushUInt(1 + choices.Next(50));
                break;
            case 1:
                list.PushString(gWords[choices.Next(9)]);
                break;
            case 2:
                FillObject(choices, list.PushObject(), depth + 1);
                break;
            default:
                FillList(choices, list.PushList(), depth + 1);
                break;
        }
    }
}

bool SameShape(Tavo::ObjectState const& left, Tavo::ObjectState const& right);

bool SameValueShape(Tavo::ObjectState::Value const& left, Tavo::ObjectState::Value const& right) {
    using Kind = Tavo::ObjectState::Value::Kind;
    bool const leftStructure = left.GetKind() == Kind::Object || left.GetKind() == Kind::List;
    bool const rightStructure = right.GetKind() == Kind::Object || right.GetKind() == Kind::List;
    if (!leftStructure || !rightStructure) {
        return leftStructure == rightStructure;
    }
    if (left.GetKind() != right.GetKind()) {
        return false;
    }
    if (left.GetKind() == Kind::Object) {
        return SameShape(left.GetObject(), right.GetObject());
    }
    Tavo::ObjectState::List const& l = left.GetList();
    Tavo::ObjectState::List const& r = right.GetList();
    if (l.GetSize() != r.GetSize()) {
        return false;
    }
    for (std::size_t index = 0; index < l.GetSize(); ++index) {
        if (!SameValueShape(l[index], r[index])) {
            return false;
        }
    }
    return true;
}

bool SameShape(Tavo::ObjectState const& left, Tavo::ObjectState const& right) {
    if (left.GetFieldCount() != right.GetFieldCount()) {
        return false;
    }
    for (auto l = left.begin(), r = right.begin(); l != left.end(); ++l, ++r) {
        if (!(l->name == r->name) || !SameValueShape(l->value, r->value)) {
            return false;
        }
    }
    return true;
}

void RoundTripState(std::uint8_t const* data, std::size_t size) {
    Choices choices(data, size);
    Tavo::ObjectState state;
    FillObject(choices, state, 0);
    Tavo::UniString text;
    TavoXML::CreateFromObjectState(state, text, nullptr);
    Tavo::ObjectState read;
    if (TavoXML::ConvertToObjectState(text, read, nullptr) != Tavo::NoError) {
        Fail("a written state did not read back");
    }
    if (!SameShape(state, read)) {
        Fail("a written state lost its structure");
    }
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    // No input may reach the network: without a net accessor, external references by URL fail to open.
    delete xercesc::XMLPlatformUtils::fgNetAccessor;
    xercesc::XMLPlatformUtils::fgNetAccessor = nullptr;
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    static FuzzProvider const providers[] = {{0, false}, {1, false}, {0, true}, {1, true}};
    unsigned int const mode = data[0];
    if (mode < 5) {
        ReadDocument(data + 1, size - 1, mode == 0 ? nullptr : &providers[mode - 1]);
    } else {
        RoundTripState(data + 1, size - 1);
    }
    return 0;
}
