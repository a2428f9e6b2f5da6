#include "TavoXMLUtils/parsing/LocationInputSource.hpp"
#include "ParsingTestSupport.hpp"
#include "TavoXMLUtils/parsing/LocationBinInputStream.hpp"
#include "TavoXMLUtils/parsing/TavoEntityResolver.hpp"

#include <gtest/gtest.h>
#include <xercesc/framework/URLInputSource.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include <filesystem>
#include <memory>
#include <vector>

using namespace ParsingTest;

TEST(LocationBinInputStream, MissingFileStaysUnopenedAndRefusesReads) {
    Vesk::Location const location = DataLocation("no-such-file.xml");
    LocationBinInputStream stream(&location);
    EXPECT_FALSE(stream.IsOpened());
    XMLByte buffer[8];
    try {
        stream.readBytes(buffer, sizeof buffer);
        FAIL() << "no exception";
    } catch (xercesc::XMLPlatformUtilsException const& exception) {
        EXPECT_EQ(static_cast<int>(exception.getCode()), 34);
    }
    EXPECT_EQ(LocationInputSource(location).makeStream(), nullptr);
}

TEST(LocationInputSource, SystemIdIsTheURLAndEveryStreamReadsTheWholeFileAnew) {
    Vesk::Location const location = DataLocation("wellformed.xml");
    LocationInputSource const source(location);
    Tavo::UniString url;
    location.ToURL(&url);
    EXPECT_EQ(Utf8(source.getSystemId()), Utf8(url));

    auto const size = std::filesystem::file_size(DataPath("wellformed.xml"));
    std::unique_ptr<xercesc::BinInputStream> first(source.makeStream());
    std::unique_ptr<xercesc::BinInputStream> second(source.makeStream());
    ASSERT_TRUE(first && second);
    // Only the low 32 bits of the count are taken: 2^32 + 5 reads five bytes.
    std::vector<XMLByte> buffer(size + 16);
    EXPECT_EQ(first->readBytes(buffer.data(), (XMLSize_t{1} << 32) + 5), 5u);
    EXPECT_EQ(std::string(buffer.begin(), buffer.begin() + 5), "<?xml");
    EXPECT_EQ(second->readBytes(buffer.data(), buffer.size()), size);
    EXPECT_EQ(first->readBytes(buffer.data(), buffer.size()), size - 5);
    EXPECT_EQ(first->readBytes(buffer.data(), buffer.size()), 0u);
    EXPECT_EQ(first->curPos(), size);

    Vesk::Location const empty = DataLocation("empty.xml");
    LocationBinInputStream emptyStream(&empty);
    ASSERT_TRUE(emptyStream.IsOpened());
    EXPECT_EQ(emptyStream.readBytes(buffer.data(), buffer.size()), 0u);
}

TEST(TavoEntityResolver, RelativeIdsAreLocalFilesAndAbsoluteOnesURLs) {
    TavoEntityResolver resolver;
    // A relative id gets no base: it names a file below the working directory.
    std::unique_ptr<xercesc::InputSource> relative(resolver.resolveEntity(nullptr, u"sub/entity.ent"));
    auto const* local = dynamic_cast<LocationInputSource*>(relative.get());
    ASSERT_NE(local, nullptr);
    Vesk::Location const expected((std::filesystem::current_path() / "sub/entity.ent").string().c_str());
    EXPECT_TRUE(local->GetLocation() == expected);

    std::unique_ptr<xercesc::InputSource> file(resolver.resolveEntity(nullptr, u"file:///etc/hostname"));
    EXPECT_NE(dynamic_cast<xercesc::URLInputSource*>(file.get()), nullptr);
    // Network schemes are never opened.
    std::unique_ptr<xercesc::InputSource> remote(
        resolver.resolveEntity(nullptr, u"http://127.0.0.1:9/x.ent"));
    ASSERT_NE(dynamic_cast<xercesc::URLInputSource*>(remote.get()), nullptr);
    EXPECT_EQ(remote->makeStream(), nullptr);
}
