#include "parsing/HostileTestSupport.hpp"

#include "TavoXMLUtils/interface/TavoXMLChannelGuards.hpp"
#include "TavoXMLUtils/interface/TavoXMLExceptions.hpp"
#include "TavoXMLUtils/interface/TavoXMLIChannelFactories.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <vector>

#include <malloc.h>

#ifdef TAVO_TEST_UNDER_ASAN
// Part of every AddressSanitizer runtime; not every compiler ships the header that declares it.
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#endif

using namespace ParsingTest;

namespace {

constexpr char const* gExpansionLimit = "Entity expansion exceeds the limit of 10485760 characters";
constexpr std::size_t gMiB = std::size_t{1} << 20;

// The address space a child may add: enough for every bounded parse, far below what an unbounded one
// takes. Without a limit under AddressSanitizer, which can't run with one.
std::size_t ChildLimit(std::size_t bytes) {
    return gUnderAddressSanitizer ? 0 : bytes;
}

std::string ParseOutcome(std::string const& text, bool createEntityRefs = true,
                         Parser::ValSchemes scheme = Parser::Val_Auto) {
    NodeLocationInfo line;
    Tavo::UniString message;
    Document const document = ParseBytes(text, &line, &message, createEntityRefs, scheme);
    if (document) {
        return "parsed";
    }
    return "line " + std::to_string(line.lineNumber) + ": " + Utf8(message);
}

std::size_t AllocatedBytes() {
#ifdef TAVO_TEST_UNDER_ASAN
    return __sanitizer_get_current_allocated_bytes();
#else
    struct mallinfo2 const info = mallinfo2();
    return info.uordblks + info.hblkhd;
#endif
}

} // namespace

// One 100 KB entity used 100,000 times (a 400 KB document asking for 10^10 characters) ends at the bound,
// in content, with or without entity reference nodes; the same document a little below it parses, and a
// large document may expand to ten times its size.
TEST(ParseLimits, ExpansionInContentIsBoundedBySize) {
    ChildOutcome const outcome = RunInChild(
        [] {
            return ParseOutcome(RepeatedEntityDocument(100'000, 100'000, false)) + " / " +
                   ParseOutcome(RepeatedEntityDocument(100'000, 100'000, false), false);
        },
        ChildLimit(1024 * gMiB), 120);
    std::string const refused = "line 2: " + std::string(gExpansionLimit);
    EXPECT_EQ(outcome.text, refused + " / " + refused);

    EXPECT_EQ(ParseOutcome(RepeatedEntityDocument(1'000, 10'000, false)), "parsed");
    std::string large = RepeatedEntityDocument(1'000, 15'000, false);
    large.insert(large.find("<r>"), "<!--" + std::string(2 * gMiB, 'p') + "-->\n");
    EXPECT_EQ(ParseOutcome(large), "parsed");
    std::string const corpus = ReadFileBytes(TavoTest::CorpusPath("hostile/authored/quadratic-blowup.xml"));
    ASSERT_FALSE(corpus.empty());
    // Its elements are not declared: expanded without validation.
    EXPECT_NE(ParseOutcome(corpus, true, Parser::Val_Never).find(gExpansionLimit), std::string::npos);
}

// In an attribute value and in parameter entities the expansion meets the memory budget or the bound.
TEST(ParseLimits, ExpansionInAttributesAndParameterEntitiesIsBounded) {
    ChildOutcome const outcome = RunInChild(
        [] {
            std::string const attribute = ParseOutcome(RepeatedEntityDocument(100'000, 20'000, true));
            // The DTD has a relative system id, which is looked for in the working directory.
            WorkingDirectory const here(TavoTest::CorpusPath("hostile/authored"));
            Tavo::UniString message;
            Document const bomb(ParseXMLDoc(
                Vesk::Location(
                    TavoTest::CorpusPath("hostile/authored/billion-laughs-parameter-entity.xml").c_str()),
                Parser::Val_Auto, true, nullptr, nullptr, &message));
            return attribute + " / " + (bomb ? std::string("parsed") : Utf8(message));
        },
        ChildLimit(1024 * gMiB), 120);
    ASSERT_TRUE(outcome.returned) << outcome.text;
    EXPECT_NE(outcome.text.find("out of memory: the document needs more than the parser allows"),
              std::string::npos)
        << outcome.text;
    EXPECT_EQ(outcome.text.find("parsed"), std::string::npos) << outcome.text;
    // Ten million characters in one attribute, from a 31 KB document, are still fine.
    std::string const longValue =
        ReadFileBytes(TavoTest::CorpusPath("hostile/authored/long-attribute-value-10MB-expanded.xml"));
    EXPECT_EQ(ParseOutcome(longValue, true, Parser::Val_Never), "parsed");
}

// Parameter entities expanded between the DTD's declarations: neither the parser's count nor the values
// of entity declarations see them. A doubling bomb of empty ones (2^30 expansions, no text at all) meets
// the count of entities read; one that yields comments meets the bound on the DTD's text; as does the
// corpus's bomb of external parameter entities, with that text and not an unrelated one. An ordinary DTD
// that uses a parameter entity a thousand times is fine.
TEST(ParseLimits, ParameterEntitiesBetweenDeclarationsAreBounded) {
    std::string empty = "<!DOCTYPE r [\n<!ENTITY % e0 \"\">\n";
    for (int level = 1; level <= 30; ++level) {
        std::string const inner = "&#37;e" + std::to_string(level - 1) + ";";
        empty += "<!ENTITY % e" + std::to_string(level) + " \"" + inner + inner + "\">\n";
    }
    empty += "%e30;\n]>\n<r/>";
    EXPECT_EQ(ParseOutcome(empty), "line 33: Entity expansion exceeds the limit of 51000 entities read");

    std::string const comment = "<!ENTITY % c \"<!--" + std::string(1000, 'c') + "-->\">\n";
    std::string uses;
    for (int use = 0; use < 20'000; ++use) {
        uses += "%c;\n";
    }
    std::string const comments = "<!DOCTYPE r [\n" + comment + uses + "]>\n<r/>";
    EXPECT_EQ(ParseOutcome(comments, true, Parser::Val_Never)
                  .rfind("line 10383: " + std::string(gExpansionLimit), 0),
              0u);

    std::string declarations = "<!DOCTYPE r [\n<!ENTITY % d \"<!ATTLIST r a CDATA #IMPLIED>\">\n";
    for (int use = 0; use < 1'000; ++use) {
        declarations += "%d;\n";
    }
    declarations += "<!ELEMENT r EMPTY>\n]>\n<r a='1'/>";
    EXPECT_EQ(ParseOutcome(declarations), "parsed");

    if (!gUnderAddressSanitizer) { // some 37,000 files opened: slow under the sanitizer
        WorkingDirectory const here(TavoTest::CorpusPath("hostile/libxml2-recurse"));
        Tavo::UniString message;
        Document const bomb(
            ParseXMLDoc(Vesk::Location("lol_ep.xml"), Parser::Val_Never, true, nullptr, nullptr, &message));
        EXPECT_FALSE(bomb);
        EXPECT_EQ(Utf8(message), gExpansionLimit);
    }
}

// Running out of memory is a parse failure like any other, through the front-end and the channels, and
// the parser works again afterwards.
TEST(ParseLimits, MemoryExhaustionIsAParseFailure) {
    if (gUnderAddressSanitizer) {
        GTEST_SKIP() << "needs an address-space limit, which AddressSanitizer cannot run under";
    }
    std::string const big = PlainDocument(100 * gMiB);
    std::string const small = "<r><a>fine</a></r>";
    ChildOutcome const outcome = RunInChild(
        [&] {
            std::string result;
            ValidatingXMLParser parser;
            auto parse = [&parser](std::string const& text, Tavo::UniString* message) {
                return Document(parser.Parse(reinterpret_cast<unsigned char const*>(text.data()),
                                             static_cast<unsigned int>(text.size()), Parser::Val_Auto, true,
                                             Tavo::UniString("memory.xml"), nullptr, nullptr, message));
            };
            Tavo::UniString message;
            result += parse(big, &message) ? "parsed" : Utf8(message);
            result += parse(small, &message) ? " / again" : " / not again: " + Utf8(message);

            auto const* const bytes = reinterpret_cast<unsigned char const*>(big.data());
            auto const size = static_cast<unsigned int>(big.size());
            Tavo::XMLIChannel* channel =
                TavoXML::CreateXMLIChannelFromMemory(bytes, size, "r", TavoXML::ReturnNullOnError);
            result += channel == nullptr ? " / null" : " / channel";
            TavoXML::DisposeXMLIChannel(channel);
            try {
                channel = TavoXML::CreateXMLIChannelFromMemory(bytes, size, "r", TavoXML::ThrowOnError);
                TavoXML::DisposeXMLIChannel(channel);
                result += " / channel";
            } catch (TavoXML::XMLIChannelException const& exception) {
                std::string const text = Utf8(exception.GetMessage());
                result += " / " + text.substr(text.rfind(':') + 2);
            }
            return result;
        },
        256 * gMiB, 300);
    EXPECT_EQ(outcome.text, "out of memory / again / null / out of memory");
}

// A malformed content model makes the parser's library leak what it built of it; a failed parse must
// not keep any of that.
TEST(ParseLimits, FailedParseLeaksNothing) {
    std::string model = "<!DOCTYPE a [\n<!ELEMENT a (";
    for (int index = 0; index < 25'000; ++index) {
        model += "(b1,b2),";
    }
    model += ">\n]>\n<a/>";
    ASSERT_GT(model.size(), 200'000u);
    std::string const first = ParseOutcome(model);
    EXPECT_EQ(first.rfind("line 2: ", 0), 0u) << first;
    std::size_t const before = AllocatedBytes();
    for (int round = 0; round < 20; ++round) {
        ASSERT_EQ(ParseOutcome(model), first);
    }
    std::size_t const after = AllocatedBytes();
    EXPECT_LT(after, before + 4 * gMiB) << "grew by " << (after - before) / gMiB << " MiB";
}

// The bounds lie far above what real documents need: none of the real-world corpus or of the W3C suite's
// valid tests meets one, with external entities read from beside each document.
TEST(ParseLimits, RealDocumentsStayWithinTheBounds) {
    std::vector<std::filesystem::path> files;
    std::set<std::string> const extensions = {".xml", ".svg", ".xhtml", ".xsd", ".osm", ".opf", ".rels"};
    for (auto const& entry :
         std::filesystem::recursive_directory_iterator(TavoTest::CorpusPath("realworld"))) {
        if (entry.is_regular_file() && extensions.contains(entry.path().extension().string())) {
            files.push_back(entry.path());
        }
    }
    for (auto const& entry : std::filesystem::recursive_directory_iterator(TavoTest::CorpusPath("xmlconf"))) {
        std::string const path = entry.path().string();
        if (entry.path().extension() == ".xml" && path.find("/valid/") != std::string::npos) {
            files.push_back(entry.path());
        }
    }
    ASSERT_GT(files.size(), 800u);
    ValidatingXMLParser parser;
    parser.AllowExternalGeneralEntities(true);
    std::size_t parsed = 0;
    for (std::filesystem::path const& file : files) {
        WorkingDirectory const here(file.parent_path());
        Tavo::UniString message;
        Document const document(
            parser.Parse(Vesk::Location(file.c_str()), Parser::Val_Never, true, nullptr, nullptr, &message));
        parsed += document ? 1 : 0;
        EXPECT_EQ(Utf8(message).find("Entity expansion exceeds"), std::string::npos) << file;
        EXPECT_EQ(Utf8(message).find("out of memory"), std::string::npos) << file;
        EXPECT_EQ(Utf8(message).find("entity expansions"), std::string::npos) << file;
    }
    EXPECT_GT(parsed, files.size() * 9 / 10);
}
