// The installed tavoxml command, run as a user runs it: output and exit code of each subcommand on
// small documents of its own and on real-world documents.
#include "common/GoldenFile.hpp"
#include "common/TempFolder.hpp"
#include "common/TestData.hpp"

#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdio>
#include <filesystem>
#include <string>

namespace {

struct Outcome {
    int exitCode = -1;
    std::string out;
};

// Runs tavoxml from tests/data/tools with `arguments` (a shell word list), standard error to a file
// of its own so that the standard output stays as the command gave it.
Outcome Tavoxml(std::string const& arguments, std::string* errors = nullptr) {
    std::string const errorFile = (TavoTest::TestTempFolder() / "stderr.txt").string();
    std::string const command = "cd '" + TavoTest::DataPath("tools") + "' && '" TAVOXML_INSTALLED "' " +
                                arguments + " 2>'" + errorFile + "'";
    Outcome run;
    FILE* pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) {
        return run;
    }
    char buffer[4096];
    for (std::size_t n; (n = std::fread(buffer, 1, sizeof buffer, pipe)) > 0;) {
        run.out.append(buffer, n);
    }
    int const status = pclose(pipe);
    run.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    if (errors != nullptr) {
        *errors = TavoTest::ReadFileBytes(errorFile);
    }
    return run;
}

} // namespace

TEST(Tavoxml, CheckReportsOkLinesAndTroubleWithTheirExitCodes) {
    Outcome run = Tavoxml("check good.xml broken.xml");
    EXPECT_EQ(run.exitCode, 1);
    TavoTest::ExpectGolden(run.out, "tools/check-broken.expected");

    run = Tavoxml("check --quiet good.xml");
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.out, "");

    std::string errors;
    run = Tavoxml("check good.xml missing.xml", &errors);
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(run.out, "good.xml: ok\n");
    EXPECT_EQ(errors, "missing.xml: cannot read the file\n");

    run = Tavoxml("check - < broken.xml");
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.out.rfind("-:4: ", 0), 0u) << run.out;

    // A DTD that the document breaks is a failure, unless validation is off.
    EXPECT_EQ(Tavoxml("check invalid-by-dtd.xml").exitCode, 1);
    EXPECT_EQ(Tavoxml("check --no-validate invalid-by-dtd.xml").exitCode, 0);
}

TEST(Tavoxml, CheckAgainstASchemaAgreesWithTheCorpusVerdicts) {
    std::string const maven = TavoTest::CorpusPath("realworld/maven/");
    std::string const schema = "--schema '" + maven + "maven-4.0.0.xsd' ";
    EXPECT_EQ(Tavoxml("check " + schema + "'" + maven + "graphhopper-pom.xml'").exitCode, 0);
    Outcome const run = Tavoxml("check " + schema + "'" + maven + "commons-lang-pom.xml'");
    EXPECT_EQ(run.exitCode, 1) << run.out;
    EXPECT_EQ(Tavoxml("check --schema missing.xsd good.xml").exitCode, 2);
    EXPECT_EQ(
        Tavoxml("check '" + TavoTest::CorpusPath("realworld/xhtml/sherlock-holmes-colophon.xhtml") + "'")
            .exitCode,
        0);
}

TEST(Tavoxml, DiffPrintsTheFirstDifferenceWithTheLineOfEachNode) {
    // The scales agree within the default tolerance; the names differ, on lines 1 and 3.
    Outcome run = Tavoxml("diff --skip-whitespace left.xml right.xml");
    EXPECT_EQ(run.exitCode, 1);
    TavoTest::ExpectGolden(run.out, "tools/diff-left-right.expected");

    EXPECT_EQ(Tavoxml("diff num-a.xml num-b.xml").exitCode, 1);
    EXPECT_EQ(Tavoxml("diff --eps 0.5 num-a.xml num-b.xml").exitCode, 0);
    run = Tavoxml("diff left.xml same-as-left-indented.xml");
    EXPECT_EQ(run.exitCode, 1) << "an indented document has text nodes the other lacks";
    run = Tavoxml("diff --skip-whitespace left.xml same-as-left-indented.xml");
    EXPECT_EQ(run.exitCode, 0) << run.out;
    EXPECT_EQ(run.out, "");

    EXPECT_EQ(Tavoxml("diff --skip-whitespace left.xml upper-case.xml").exitCode, 0);
    EXPECT_EQ(Tavoxml("diff --skip-whitespace --case-sensitive left.xml upper-case.xml").exitCode, 1);

    EXPECT_EQ(Tavoxml("diff eps-a.xml eps-b.xml").exitCode, 1);
    EXPECT_EQ(Tavoxml("diff --attr-ruled eps-a.xml eps-b.xml").exitCode, 0);

    EXPECT_EQ(Tavoxml("diff left.xml missing.xml").exitCode, 2);
    EXPECT_EQ(Tavoxml("diff left.xml broken.xml").exitCode, 2);
    std::string const osm = "'" + TavoTest::CorpusPath("realworld/osm/osmnx-planet-small.osm") + "'";
    EXPECT_EQ(Tavoxml("diff " + osm + " " + osm).exitCode, 0);
    // Comments are nodes the ready options do not compare, even two equal ones.
    std::string const maven = TavoTest::CorpusPath("realworld/maven/");
    Outcome const comments =
        Tavoxml("diff '" + maven + "commons-lang-pom.xml' '" + maven + "commons-lang-pom.xml'");
    EXPECT_EQ(comments.exitCode, 1);
    EXPECT_NE(comments.out.find("by rejecting themin the NodeFilter"), std::string::npos) << comments.out;
    Outcome const poms =
        Tavoxml("diff '" + maven + "graphhopper-pom.xml' '" + maven + "graphhopper-core-pom.xml'");
    EXPECT_EQ(poms.exitCode, 1);
    EXPECT_NE(poms.out.find("graphhopper-core-pom.xml:"), std::string::npos) << poms.out;
}

TEST(Tavoxml, FormatWritesTheChosenEncodingToStandardOutputOrAFile) {
    Outcome run = Tavoxml("format small.xml");
    EXPECT_EQ(run.exitCode, 0);
    TavoTest::ExpectGolden(run.out, "tools/format-utf8.expected");
    run = Tavoxml("format --encoding ISO-8859-1 - < small.xml");
    EXPECT_EQ(run.exitCode, 0);
    TavoTest::ExpectGolden(run.out, "tools/format-latin1.expected");

    std::filesystem::path const output = TavoTest::TestTempFolder() / "formatted.xml";
    run = Tavoxml("format --encoding UTF-16LE -o '" + output.string() + "' small.xml");
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.out, "");
    TavoTest::ExpectGolden(TavoTest::ReadFileBytes(output.string()), "tools/format-utf16le.expected");

    EXPECT_EQ(Tavoxml("format broken.xml").exitCode, 1);
    EXPECT_EQ(Tavoxml("format missing.xml").exitCode, 2);
}

TEST(Tavoxml, HelpAndBadOptions) {
    Outcome run = Tavoxml("--help");
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_NE(run.out.find("check"), std::string::npos);
    EXPECT_NE(run.out.find("diff"), std::string::npos);
    EXPECT_NE(run.out.find("format"), std::string::npos);
    EXPECT_EQ(Tavoxml("diff --help").exitCode, 0);
    EXPECT_EQ(Tavoxml("check --frobnicate good.xml").exitCode, 2);
    EXPECT_EQ(Tavoxml("").exitCode, 2);
    EXPECT_EQ(Tavoxml("diff left.xml").exitCode, 2);
}
