#include "TavoXMLUtils/parsing/LocationInputSource.hpp"
#include "TavoXMLUtils/parsing/internal/TavoEntityResolver.hpp"
#include "parsing/ParsingTestSupport.hpp"

#include <xercesc/util/BinInputStream.hpp>

#include <gtest/gtest.h>
#include <xercesc/framework/URLInputSource.hpp>

#include <filesystem>
#include <memory>
#include <vector>

using namespace ParsingTest;

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
    // A missing file gives no stream at all.
    EXPECT_EQ(LocationInputSource(DataLocation("no-such-file.xml")).makeStream(), nullptr);
}

TEST(TavoEntityResolver, NetworkSchemesAreNeverOpened) {
    TavoEntityResolver resolver;
    std::unique_ptr<xercesc::InputSource> remote(
        resolver.resolveEntity(nullptr, u"http://127.0.0.1:9/x.ent"));
    ASSERT_NE(dynamic_cast<xercesc::URLInputSource*>(remote.get()), nullptr);
    EXPECT_EQ(remote->makeStream(), nullptr);
}
