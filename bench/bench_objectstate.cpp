// An object state of 100,000 values (10,000 records, each with six scalars of four kinds, an object of
// two reals and a list of two strings) converted to XML text and back, in the plain and in the typed
// dialect. Beside it, the same document written with raw Xerces-C++ DOM calls (the same elements and
// indentation) and DOMLSSerializer, and parsed back with XercesDOMParser and a hand-written walk that
// builds the same state. Ends with "ratio objectstate_<dialect> <value>": the bridge's time for text and
// back over the raw time for the same.
#include "TavoRoot/ObjectState.hpp"
#include "TavoXMLUtils/TavoXMLUtils.hpp"
#include "TavoXMLUtils/objectstate/ConvertToObjectState.hpp"
#include "TavoXMLUtils/objectstate/CreateFromObjectState.hpp"
#include "TavoXMLUtils/objectstate/TypeInfoProvider.hpp"
#include "TavoXMLUtils/support/internal/XMLChText.hpp"
#include "bench/BenchReporter.hpp"

#include <benchmark/benchmark.h>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufFormatTarget.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>

#include <cstdio>
#include <memory>
#include <string>

namespace {

using Tavo::ObjectState;
constexpr int gRecords = 10000;

class BenchProvider : public TavoXML::TypeInfoProvider {
public:
    char const* GetTypeAttributeName() const override { return "t"; }
    char const* GetBoolTypeName() const override { return "bool"; }
    char const* GetIntTypeName() const override { return "int"; }
    char const* GetUIntTypeName() const override { return "uint"; }
    char const* GetRealTypeName() const override { return "real"; }
    char const* GetStringTypeName() const override { return "string"; }
    char const* GetObjectTypeName() const override { return "object"; }
    char const* GetListTypeName() const override { return "list"; }
    char const* GetListValueTag() const override { return "item"; }
};
BenchProvider const gProvider;

// Kinds that both dialects carry unchanged: no zero, integers within 32 bits (the signed ones negative,
// since the plain dialect reads a positive one as unsigned), reals with a fraction, words that read as
// no number.
ObjectState const& BenchState() {
    static ObjectState const state = [] {
        ObjectState built;
        for (int r = 0; r < gRecords; ++r) {
            ObjectState& record = built.AddObject("record");
            record.AddBool("flag", r % 2 == 0).AddInt("delta", -1 - r).AddUInt("size", 1 + r * 7);
            record.AddReal("ratio", r + 0.5).AddString("name", "item").AddString("note", "a text value");
            record.AddObject("point").AddReal("x", r + 1.25).AddReal("y", -0.75);
            record.AddList("tags").PushString("red").PushString("blue");
        }
        return built;
    }();
    return state;
}

// ----------------------------------------------------------------------------------------------------
// Raw Xerces-C++: writing

class RawWriter {
public:
    explicit RawWriter(bool typed) : typed(typed) {
        xercesc::DOMImplementation* implementation =
            xercesc::DOMImplementationRegistry::getDOMImplementation(u"LS");
        document = implementation->createDocument(nullptr, u"root", nullptr);
        current = document->getDocumentElement();
    }
    ~RawWriter() { document->release(); }

    Tavo::UniString Write(ObjectState const& state) {
        Fields(state);
        Indent(0);
        xercesc::DOMImplementation* implementation =
            xercesc::DOMImplementationRegistry::getDOMImplementation(u"LS");
        std::unique_ptr<xercesc::DOMLSSerializer, void (*)(xercesc::DOMLSSerializer*)> serializer(
            static_cast<xercesc::DOMImplementationLS*>(implementation)->createLSSerializer(),
            [](xercesc::DOMLSSerializer* s) { s->release(); });
        std::unique_ptr<xercesc::DOMLSOutput, void (*)(xercesc::DOMLSOutput*)> output(
            static_cast<xercesc::DOMImplementationLS*>(implementation)->createLSOutput(),
            [](xercesc::DOMLSOutput* o) { o->release(); });
        xercesc::MemBufFormatTarget target;
        output->setByteStream(&target);
        output->setEncoding(u"UTF-8");
        serializer->write(document, output.get());
        return Tavo::UniString(reinterpret_cast<char const*>(target.getRawBuffer()),
                               static_cast<unsigned int>(target.getLen()), TavoCharCodeUTF8);
    }

private:
    void Indent(int extra) {
        std::u16string text = u"\n";
        text.append(static_cast<std::size_t>(depth + extra), u'\t');
        current->appendChild(document->createTextNode(text.c_str()));
    }
    void Open(char16_t const* name, char16_t const* type) {
        Indent(1);
        xercesc::DOMElement* element = document->createElement(name);
        if (typed) {
            element->setAttribute(u"t", type);
        }
        current->appendChild(element);
        current = element;
        ++depth;
    }
    void Close() {
        Indent(-1);
        current = static_cast<xercesc::DOMElement*>(current->getParentNode());
        --depth;
    }
    void Scalar(char16_t const* name, char16_t const* type, Tavo::UniString const& text) {
        if (!typed) {
            Indent(1);
            xercesc::DOMElement* element = document->createElement(name);
            element->appendChild(document->createTextNode(TavoXML::AsXMLCh(text)));
            current->appendChild(element);
            return;
        }
        Open(name, type);
        Indent(0);
        current->appendChild(document->createTextNode(TavoXML::AsXMLCh(text)));
        Close();
    }
    void Value(char16_t const* name, ObjectState::Value const& value) {
        using Kind = ObjectState::Value::Kind;
        switch (value.GetKind()) {
            case Kind::Bool:
                Scalar(name, u"bool", Tavo::UniString(value.GetBool() ? "true" : "false"));
                break;
            case Kind::Int:
                Scalar(name, u"int", Tavo::ValueToUniString(value.GetInt()));
                break;
            case Kind::UInt:
                Scalar(name, u"uint", Tavo::ValueToUniString(value.GetUInt()));
                break;
            case Kind::Real:
                Scalar(name, u"real", Tavo::ValueToUniString(value.GetReal()));
                break;
            case Kind::String:
                Scalar(name, u"string", value.GetString());
                break;
            case Kind::Object:
                Open(name, u"object");
                Fields(value.GetObject());
                Close();
                break;
            case Kind::List:
                Open(name, u"list");
                for (ObjectState::Value const& element : value.GetList()) {
                    Value(typed ? u"item" : u"list_value", element);
                }
                Close();
                break;
        }
    }
    void Fields(ObjectState const& state) {
        for (ObjectState::Field const& field : state) {
            Tavo::UniString const name(field.name.ToCStr());
            Value(TavoXML::AsXMLCh(name), field.value);
        }
    }

    bool typed;
    xercesc::DOMDocument* document;
    xercesc::DOMElement* current;
    int depth = 0;
};

// ----------------------------------------------------------------------------------------------------
// Raw Xerces-C++: parsing and a hand-written walk

class RawReader {
public:
    explicit RawReader(bool typed) : typed(typed) {}

    ObjectState Read(Tavo::UniString const& text) {
        std::string const bytes = Tavo::ToUTF8String(text);
        xercesc::XercesDOMParser parser;
        xercesc::MemBufInputSource source(reinterpret_cast<XMLByte const*>(bytes.data()), bytes.size(),
                                          "bench");
        parser.parse(source);
        ObjectState state;
        Object(parser.getDocument()->getDocumentElement(), state);
        return state;
    }

private:
    static xercesc::DOMElement const* Next(xercesc::DOMNode const* node) {
        while (node && node->getNodeType() != xercesc::DOMNode::ELEMENT_NODE) {
            node = node->getNextSibling();
        }
        return static_cast<xercesc::DOMElement const*>(node);
    }
    static bool Is(XMLCh const* text, char16_t const* word) { return xercesc::XMLString::equals(text, word); }

    // The text of a value element, trimmed in the typed dialect as the typed reader does.
    Tavo::UniString Text(xercesc::DOMElement const* element) const {
        Tavo::UniString text(TavoXML::AsUShort(element->getFirstChild()->getNodeValue()));
        if (typed) {
            text.Trim();
        }
        return text;
    }
    // The plain dialect's inference for the texts of this document.
    ObjectState::Value PlainValue(Tavo::UniString const& text) const {
        unsigned long long u = 0;
        long long i = 0;
        double r = 0;
        if (Tavo::UniStringToValue(text, u)) {
            return ObjectState::Value(u);
        }
        if (Tavo::UniStringToValue(text, i)) {
            return ObjectState::Value(i);
        }
        if (Tavo::UniStringToValue(text, r)) {
            return ObjectState::Value(r);
        }
        if (text == "true" || text == "false") {
            return ObjectState::Value(text == "true");
        }
        return ObjectState::Value(text);
    }
    ObjectState::Value TypedValue(XMLCh const* type, Tavo::UniString const& text) const {
        if (Is(type, u"bool")) {
            return ObjectState::Value(text == "true");
        }
        if (Is(type, u"int")) {
            long long i = 0;
            Tavo::UniStringToValue(text, i);
            return ObjectState::Value(i);
        }
        if (Is(type, u"uint")) {
            unsigned long long u = 0;
            Tavo::UniStringToValue(text, u);
            return ObjectState::Value(u);
        }
        if (Is(type, u"real")) {
            double r = 0;
            Tavo::UniStringToValue(text, r);
            return ObjectState::Value(r);
        }
        return ObjectState::Value(text);
    }
    // Structures have more than one child (their indentation); the attribute or the names tell which.
    bool IsList(xercesc::DOMElement const* element) const {
        if (typed) {
            return Is(element->getAttribute(u"t"), u"list");
        }
        xercesc::DOMElement const* first = Next(element->getFirstChild());
        return first && Is(first->getNodeName(), u"list_value");
    }
    bool IsStructure(xercesc::DOMElement const* element) const {
        return typed ? Is(element->getAttribute(u"t"), u"list") || Is(element->getAttribute(u"t"), u"object")
                     : element->getFirstChild()->getNextSibling() != nullptr;
    }
    ObjectState::Value Value(xercesc::DOMElement const* element) const {
        if (!IsStructure(element)) {
            return typed ? TypedValue(element->getAttribute(u"t"), Text(element)) : PlainValue(Text(element));
        }
        if (IsList(element)) {
            ObjectState::List list;
            for (auto const* child = Next(element->getFirstChild()); child;
                 child = Next(child->getNextSibling())) {
                list.Push(Value(child));
            }
            return ObjectState::Value(std::move(list));
        }
        ObjectState object;
        Object(element, object);
        return ObjectState::Value(std::move(object));
    }
    void Object(xercesc::DOMElement const* element, ObjectState& object) const {
        for (auto const* child = Next(element->getFirstChild()); child;
             child = Next(child->getNextSibling())) {
            Tavo::UniString const name(TavoXML::AsUShort(child->getNodeName()));
            object.Add(Tavo::String(name.ToCStr().Get()), Value(child));
        }
    }

    bool typed;
};

// ----------------------------------------------------------------------------------------------------
// Benchmarks

TavoXML::TypeInfoProvider const* ProviderFor(bool typed) {
    return typed ? &gProvider : nullptr;
}

std::size_t BridgeRoundTrip(bool typed) {
    Tavo::UniString text;
    TavoXML::CreateFromObjectState(BenchState(), text, ProviderFor(typed));
    ObjectState read;
    TavoXML::ConvertToObjectState(text, read, ProviderFor(typed));
    return text.GetLength() + read.GetFieldCount();
}

std::size_t RawRoundTrip(bool typed) {
    Tavo::UniString const text = RawWriter(typed).Write(BenchState());
    ObjectState const read = RawReader(typed).Read(text);
    return text.GetLength() + read.GetFieldCount();
}

void BM_RoundTrip(benchmark::State& state, std::size_t (*roundTrip)(bool), bool typed) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(roundTrip(typed));
    }
}
BENCHMARK_CAPTURE(BM_RoundTrip, Bridge_Plain, BridgeRoundTrip, false)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3)
    ->Repetitions(5);
BENCHMARK_CAPTURE(BM_RoundTrip, Raw_Plain, RawRoundTrip, false)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3)
    ->Repetitions(5);
BENCHMARK_CAPTURE(BM_RoundTrip, Bridge_Typed, BridgeRoundTrip, true)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3)
    ->Repetitions(5);
BENCHMARK_CAPTURE(BM_RoundTrip, Raw_Typed, RawRoundTrip, true)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3)
    ->Repetitions(5);

// Both sides must read back the state that was written, or the comparison means nothing.
bool SidesAgree(bool typed) {
    Tavo::UniString bridgeText;
    TavoXML::CreateFromObjectState(BenchState(), bridgeText, ProviderFor(typed));
    ObjectState bridgeRead;
    if (TavoXML::ConvertToObjectState(bridgeText, bridgeRead, ProviderFor(typed)) != Tavo::NoError) {
        return false;
    }
    Tavo::UniString const rawText = RawWriter(typed).Write(BenchState());
    return bridgeRead == BenchState() && RawReader(typed).Read(rawText) == BenchState() &&
           RawReader(typed).Read(bridgeText) == BenchState();
}

} // namespace

int main(int argc, char** argv) {
    bench::InitializeInterleaved(argc, argv);
    for (bool typed : {false, true}) {
        if (!SidesAgree(typed)) {
            std::fprintf(stderr, "the bridge and the raw walk disagree in the %s dialect\n",
                         typed ? "typed" : "plain");
            return 1;
        }
    }
    bench::BestTimeReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    double const bridgePlain = reporter.Best("BM_RoundTrip/Bridge_Plain");
    double const rawPlain = reporter.Best("BM_RoundTrip/Raw_Plain");
    double const bridgeTyped = reporter.Best("BM_RoundTrip/Bridge_Typed");
    double const rawTyped = reporter.Best("BM_RoundTrip/Raw_Typed");
    if (bridgePlain > 0 && rawPlain > 0 && bridgeTyped > 0 && rawTyped > 0) {
        std::printf("plain: bridge %.1f ms, raw %.1f ms\n", bridgePlain * 1e3, rawPlain * 1e3);
        std::printf("typed: bridge %.1f ms, raw %.1f ms\n", bridgeTyped * 1e3, rawTyped * 1e3);
        std::printf("ratio objectstate_plain %.3f\n", bridgePlain / rawPlain);
        std::printf("ratio objectstate_typed %.3f\n", bridgeTyped / rawTyped);
    }
    benchmark::Shutdown();
    return 0;
}
