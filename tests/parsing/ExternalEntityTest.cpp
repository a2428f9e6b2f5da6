#include "common/TempFolder.hpp"
#include "parsing/HostileTestSupport.hpp"

#include "TavoXMLUtils/interface/TavoXMLChannelGuards.hpp"
#include "TavoXMLUtils/interface/TavoXMLExceptions.hpp"
#include "TavoXMLUtils/interface/TavoXMLIChannelFactories.hpp"
#include "TavoXMLUtils/parsing/internal/TavoEntityResolver.hpp"

#include <xercesc/framework/URLInputSource.hpp>

#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <vector>

#include <sys/stat.h>

using namespace ParsingTest;

namespace {

constexpr char const* gMarker = "SECRET-BYTES-OF-A-LOCAL-FILE";
constexpr char const* gRefusal = "external general entities are disabled";

// A folder of its own with a secret file, a DTD, and a FIFO.
struct EntityFolder {
    std::filesystem::path folder = TavoTest::TestTempFolder() / "entities";
    std::filesystem::path secret = folder / "secret.txt";
    std::filesystem::path dtd = folder / "decl.dtd";
    std::filesystem::path fifo = folder / "fifo";

    EntityFolder() {
        std::filesystem::create_directories(folder);
        std::ofstream(secret) << gMarker;
        std::ofstream(dtd)
            << "<!ELEMENT r ANY>\n<!ENTITY greeting \"hello\">\n<!ATTLIST r a CDATA \"default\">\n";
        if (!std::filesystem::exists(fifo)) {
            mkfifo(fifo.c_str(), 0600);
        }
    }
};

std::string EntityDocument(std::string const& systemId) {
    return "<?xml version=\"1.0\"?>\n<!DOCTYPE r [<!ELEMENT r ANY><!ENTITY x SYSTEM \"" + systemId +
           "\">]>\n<r>&x;</r>";
}

// The system ids that name the secret file, from the folder as working directory.
std::vector<std::string> LocalIds(EntityFolder const& files) {
    return {"file://" + files.secret.string(), files.secret.string(),
            "file://localhost" + files.secret.string(), "secret.txt"};
}

std::string Outcome(Document const& document, Tavo::UniString const& message) {
    return document ? AllText(document.get()) : "null: " + Utf8(message);
}

} // namespace

// External general entities are refused by ParseXMLDoc and the channels, by every way of naming a file.
TEST(ExternalEntities, GeneralEntitiesAreRefusedByDefault) {
    EntityFolder const files;
    WorkingDirectory const here(files.folder);
    std::vector<std::string> ids = LocalIds(files);
    ids.push_back("file://127.0.0.1" + files.secret.string());
    ids.push_back("file://tavo-test-host.invalid" + files.secret.string());
    for (std::string const& id : ids) {
        std::string const text = EntityDocument(id);
        NodeLocationInfo line;
        Tavo::UniString message;
        Document const document = ParseBytes(text, &line, &message);
        EXPECT_FALSE(document) << id << ": " << Outcome(document, message);
        EXPECT_NE(Utf8(message).find(gRefusal), std::string::npos) << id << ": " << Utf8(message);
        EXPECT_NE(Utf8(message).find(id), std::string::npos) << Utf8(message);
        EXPECT_EQ(line.lineNumber, 3u) << id;

        auto const* const bytes = reinterpret_cast<unsigned char const*>(text.data());
        auto const size = static_cast<unsigned int>(text.size());
        Tavo::XMLIChannel* channel = TavoXML::CreateXMLIChannelFromMemory(bytes, size, Tavo::XMLNoTopLevelTag,
                                                                          TavoXML::ReturnNullOnError);
        EXPECT_EQ(channel, nullptr) << id;
        TavoXML::DisposeXMLIChannel(channel);
        try {
            channel = TavoXML::CreateXMLIChannelFromMemory(bytes, size, "r", TavoXML::ThrowOnError);
            ADD_FAILURE() << "no exception for " << id;
            TavoXML::DisposeXMLIChannel(channel);
        } catch (TavoXML::XMLIChannelException const& exception) {
            EXPECT_NE(Utf8(exception.GetMessage()).find(gRefusal), std::string::npos);
        }
    }
    // From a file too, without validation.
    std::ofstream(files.folder / "doc.xml") << EntityDocument("secret.txt");
    Tavo::UniString message;
    EXPECT_FALSE(Document(ParseXMLDoc(Vesk::Location((files.folder / "doc.xml").c_str()), Parser::Val_Never,
                                      false, nullptr, nullptr, &message)));
    EXPECT_NE(Utf8(message).find(gRefusal), std::string::npos) << Utf8(message);
}

// A caller's own parser may read them, but only from local regular files, and never waits on one.
TEST(ExternalEntities, CallerMayAllowThemForLocalRegularFilesOnly) {
    EntityFolder const files;
    WorkingDirectory const here(files.folder);
    ValidatingXMLParser parser;
    EXPECT_FALSE(parser.ExternalGeneralEntitiesAllowed());
    parser.AllowExternalGeneralEntities(true);
    auto parse = [&parser](std::string const& text, Tavo::UniString* message) {
        return Document(parser.Parse(reinterpret_cast<unsigned char const*>(text.data()),
                                     static_cast<unsigned int>(text.size()), Parser::Val_Never, true,
                                     Tavo::UniString("memory.xml"), nullptr, nullptr, message));
    };
    for (std::string const& id : LocalIds(files)) {
        Tavo::UniString message;
        Document const document = parse(EntityDocument(id), &message);
        EXPECT_EQ(Outcome(document, message), gMarker) << id;
    }
    std::vector<std::string> const unread = {"file://127.0.0.1" + files.secret.string(),
                                             "file://tavo-test-host.invalid" + files.secret.string(),
                                             "file://" + files.fifo.string(),
                                             files.fifo.string(),
                                             "/dev/stdin",
                                             "file:///dev/zero",
                                             "/dev/null",
                                             files.folder.string(),
                                             "http://127.0.0.1:9/x.ent"};
    for (std::string const& id : unread) {
        ChildOutcome const outcome = RunInChild(
            [&] {
                Tavo::UniString message;
                Document const document = parse(EntityDocument(id), &message);
                return document ? "read: " + AllText(document.get()) : std::string("refused");
            },
            0, 60);
        EXPECT_EQ(outcome.text, "refused") << id;
    }
    // The resolver itself: an absolute URL of a foreign host stays a URL source without a stream.
    TavoEntityResolver resolver;
    std::string const hostURL = "file://127.0.0.1" + files.secret.string();
    std::unique_ptr<xercesc::InputSource> const source(
        resolver.resolveEntity(nullptr, TavoTest::FromUtf8(hostURL).GetU16Str()));
    ASSERT_NE(dynamic_cast<xercesc::URLInputSource*>(source.get()), nullptr);
    EXPECT_EQ(source->makeStream(), nullptr);
}

// External DTD subsets and parameter entities are still read, as long as they are regular files.
TEST(ExternalEntities, DTDsAndParameterEntitiesStillWork) {
    EntityFolder const files;
    std::string const url = "file://" + files.dtd.string();
    for (std::string const& text :
         {"<!DOCTYPE r SYSTEM \"" + url + "\">\n<r>&greeting;</r>",
          "<!DOCTYPE r [<!ENTITY % ext SYSTEM \"" + url + "\"> %ext;]>\n<r>&greeting;</r>"}) {
        Tavo::UniString message;
        Document const document = ParseBytes(text, nullptr, &message);
        ASSERT_TRUE(document) << Utf8(message);
        EXPECT_EQ(Utf8(document->getDocumentElement()->getTextContent()), "hello");
        EXPECT_EQ(Utf8(document->getDocumentElement()->getAttribute(u"a")), "default");
    }
    // A DTD that is a FIFO is not waited for.
    ChildOutcome const outcome = RunInChild(
        [&] {
            Tavo::UniString message;
            Document const document =
                ParseBytes("<!DOCTYPE r SYSTEM \"" + files.fifo.string() + "\">\n<r/>", nullptr, &message);
            return document ? std::string("parsed") : "refused: " + Utf8(message);
        },
        0, 60);
    EXPECT_EQ(outcome.text.rfind("refused: ", 0), 0u) << outcome.text;
}
