// The round-trip harness: a good run, a failing writer, a failing reader and a failing verifier, and
// no file left behind.
#include "TavoXMLUtils/support/GeneralTestFunction.hpp"
#include "TavoXMLUtils/interface/TavoXMLInterface.hpp"
#include "Vesk/FileSystem.hpp"

#include <gtest/gtest.h>

#include <string>

namespace {

bool FileLeft() {
    return Vesk::fileSystem.Exists(GeneralTestFunction::GetLocationInTemporaryFolder());
}

} // namespace

TEST(GeneralTestFunction, LocationIsFixedInTheTemporaryFolder) {
    Vesk::Location temporary;
    ASSERT_EQ(Vesk::fileSystem.GetSpecialLocation(12, &temporary), 0u);
    Vesk::Location const location = GeneralTestFunction::GetLocationInTemporaryFolder();
    EXPECT_EQ(location.GetParent(), temporary);
    EXPECT_EQ(location.GetName(), Vesk::Name("XMLReadWriteTest.xml"));
}

TEST(GeneralTestFunction, GoodRunReadsWhatWasWritten) {
    int written = 123456;
    int read = 0;
    Tavo::UniString text;
    bool verified = false;
    int const status = GeneralTestFunction::XMLReadWriteTest(
        [&](Tavo::XMLOChannel& out) {
            return out.WriteXML("Number", written) | out.WriteXML("Text", Tavo::UniString(u"\u00E9t\u00E9"));
        },
        [&](Tavo::XMLIChannel& in) { return in.ReadXML("Text", text) | in.ReadXML("Number", read); },
        [&] { return verified = (read == written && text == Tavo::UniString(u"\u00E9t\u00E9")); });
    EXPECT_EQ(status, Tavo::NoError);
    EXPECT_TRUE(verified);
    EXPECT_FALSE(FileLeft());
}

TEST(GeneralTestFunction, FailuresStopTheRunAndRemoveTheFile) {
    int readerCalls = 0;
    int verifierCalls = 0;
    auto reader = [&](Tavo::XMLIChannel&) { return ++readerCalls, Tavo::NoError; };
    auto verifier = [&] { return ++verifierCalls, true; };

    // A writer's status comes back as it is; nothing else runs.
    EXPECT_EQ(GeneralTestFunction::XMLReadWriteTest([](Tavo::XMLOChannel&) { return 5; }, reader, verifier),
              5);
    EXPECT_EQ(readerCalls + verifierCalls, 0);
    EXPECT_FALSE(FileLeft());

    // A reader's status stops the verifier.
    EXPECT_EQ(GeneralTestFunction::XMLReadWriteTest([](Tavo::XMLOChannel&) { return 0; },
                                                    [](Tavo::XMLIChannel&) { return 9; }, verifier),
              9);
    EXPECT_EQ(verifierCalls, 0);
    EXPECT_FALSE(FileLeft());

    EXPECT_EQ(GeneralTestFunction::XMLReadWriteTest([](Tavo::XMLOChannel&) { return 0; }, reader,
                                                    [] { return false; }),
              Tavo::GeneralError);
    EXPECT_EQ(readerCalls, 1);
    EXPECT_FALSE(FileLeft());
}

TEST(GeneralTestFunction, WriterFailureStillWritesTheFile) {
    Vesk::Location const location = GeneralTestFunction::GetLocationInTemporaryFolder();
    // The channel is deleted after a failed writer, and that writes the file, without its end.
    EXPECT_EQ(GeneralTestFunction::WriteToXMLFile(
                  location, [](Tavo::XMLOChannel& out) { return out.WriteXML("n", 1), 3; }),
              3);
    int value = 0;
    EXPECT_EQ(GeneralTestFunction::ReadFromXMLFile(
                  location, [&](Tavo::XMLIChannel& in) { return in.ReadXML("n", value); }),
              Tavo::NoError);
    EXPECT_EQ(value, 1);

    // Another root element than "XMLRoot" is refused.
    {
        Tavo::XMLOChannel* out = TavoXML::CreateXMLOChannel(location, "Other", TavoXML::ThrowOnError);
        TavoXML::DisposeXMLOChannel(out);
    }
    EXPECT_EQ(GeneralTestFunction::ReadFromXMLFile(location, [](Tavo::XMLIChannel&) { return 0; }),
              Tavo::GeneralError);
    EXPECT_EQ(Vesk::fileSystem.Delete(location, 0, 2), 0u);
    // A missing file is refused too.
    EXPECT_EQ(GeneralTestFunction::ReadFromXMLFile(location, [](Tavo::XMLIChannel&) { return 0; }),
              Tavo::GeneralError);
}
