// Providers and an event recorder shared by the object-state tests.
#pragma once

#include "TavoRoot/ObjectState.hpp"
#include "TavoRoot/UniString.hpp"
#include "TavoXMLUtils/objectstate/TypeInfoProvider.hpp"
#include "TavoXMLUtils/objectstate/XMLContentProcessor.hpp"
#include "common/TestText.hpp"

#include <cstdio>
#include <ostream>
#include <string>
#include <vector>

namespace Tavo {
// Prints a state as {name:kind value, ...} in failed comparisons (StatePrinter.cpp).
void PrintTo(ObjectState const& state, std::ostream* out);
} // namespace Tavo

namespace ObjectStateTest {

// A full provider; `tagContent` and `homogeneous` select the variant of the vocabulary.
class Provider : public TavoXML::TypeInfoProvider {
public:
    Provider(int tagContent, bool homogeneous) : tagContent(tagContent), homogeneous(homogeneous) {}
    bool AreListsHomogeneous() const override { return homogeneous; }
    int GetTagContent() const override { return tagContent; }
    char const* GetTypeAttributeName() const override { return "t"; }
    char const* GetBoolTypeName() const override { return "bool"; }
    char const* GetIntTypeName() const override { return "int"; }
    char const* GetUIntTypeName() const override { return "uint"; }
    char const* GetRealTypeName() const override { return "real"; }
    char const* GetStringTypeName() const override { return "string"; }
    char const* GetObjectTypeName() const override { return "object"; }
    char const* GetListTypeName() const override { return "list"; }
    char const* GetListValueTag() const override { return "item"; }
    char const* GetListSubtypeAttribute() const override { return "subtype"; }

private:
    int tagContent;
    bool homogeneous;
};

// Writes every event as a short word: "{" "}" "[" "]", "name=" for a name, "b:true", "i:-5", "u:5",
// "r:1.5", "s:text".
class Recorder : public XMLContentProcessor {
public:
    explicit Recorder(TavoXML::TypeInfoProvider const* provider) : XMLContentProcessor(provider) {}
    void NameFound(Tavo::UniString const& name) override { events.push_back(TavoTest::Utf8(name) + "="); }
    void BoolFound(bool value) override { events.push_back(value ? "b:true" : "b:false"); }
    void IntFound(long long value) override { events.push_back("i:" + std::to_string(value)); }
    void UIntFound(unsigned long long value) override { events.push_back("u:" + std::to_string(value)); }
    void RealFound(double value) override;
    void StringFound(Tavo::UniString const& value) override {
        events.push_back("s:" + TavoTest::Utf8(value));
    }
    void ObjectEntered() override { events.push_back("{"); }
    void ObjectExited() override { events.push_back("}"); }
    void ListEntered() override { events.push_back("["); }
    void ListExited() override { events.push_back("]"); }

    // The events separated by blanks.
    std::string Joined() const {
        std::string all;
        for (std::string const& event : events) {
            all += (all.empty() ? "" : " ") + event;
        }
        return all;
    }

    std::vector<std::string> events;
};

inline void Recorder::RealFound(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "r:%g", value);
    events.push_back(text);
}

} // namespace ObjectStateTest
