#include "Vesk/Location.hpp"
#include "Vesk/RelativeLocation.hpp"
#include "Vesk/VeskStatus.hpp"

#include "Vesk/VeskTestSupport.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <utility>

using VeskTest::Utf8;

namespace {

std::string URLOf(Vesk::Location const& location) {
    Tavo::UniString url;
    location.ToURL(&url);
    return Utf8(url);
}

} // namespace

TEST(VeskLocation, PathToURLAndBack) {
    // Space, non-ASCII, percent sign, '#', '?' and a reserved ':' all come out escaped.
    std::string const path = "/tmp/a b/\xC3\xBC%#?:~x.xml";
    Vesk::Location const location(path.c_str());
    EXPECT_EQ(location.GetNativePath(), path);
    EXPECT_EQ(URLOf(location), "file:///tmp/a%20b/%C3%BC%25%23%3F%3A~x.xml");

    Vesk::Location const back(Tavo::UniString(URLOf(location).c_str(), TavoCharCodeUTF8));
    EXPECT_EQ(back.GetNativePath(), path);
    EXPECT_EQ(back, location);

    Tavo::UniString text;
    location.ToPath(&text);
    EXPECT_EQ(Utf8(text), path);
    EXPECT_EQ(Utf8(location.ToLogText()), path);

    EXPECT_EQ(URLOf(Vesk::Location()), "");
}

TEST(VeskLocation, FileURLForms) {
    // Host "localhost", one slash, upper case, fragments; a '%' that starts no escape stands as it is.
    for (auto [url, path] : {std::pair{"file://localhost/x/y.xml", "/x/y.xml"},
                             {"FILE:/x/%7e%2Fz", "/x/~/z"},
                             {"file:///a/b.xml#part", "/a/b.xml"},
                             {"file:///a/100%zz%", "/a/100%zz%"}}) {
        Vesk::Location location;
        EXPECT_EQ(location.Set(Tavo::UniString(url)), 0) << url;
        EXPECT_EQ(location.GetNativePath(), path);
    }
    for (char const* url : {"file://elsewhere/x", "http://example.org/x.xsd"}) {
        Vesk::Location location("/x");
        EXPECT_NE(location.Set(Tavo::UniString(url)), 0) << url;
        EXPECT_TRUE(location.IsEmpty());
    }
}

TEST(VeskLocation, PathsAreAbsoluteAndNormal) {
    std::string const cwd = std::filesystem::current_path().string();
    EXPECT_EQ(Vesk::Location("sub/../a.xml").GetNativePath(), cwd + "/a.xml");
    EXPECT_EQ(Vesk::Location("/a/./b//c/../").GetNativePath(), "/a/b");
    EXPECT_EQ(Vesk::Location("/..").GetNativePath(), "/");
    // A colon alone does not make a URL.
    EXPECT_EQ(Vesk::Location("/notes:1.xml").GetNativePath(), "/notes:1.xml");
}

TEST(VeskLocation, AppendNameAndParent) {
    Vesk::Location location("/tmp");
    EXPECT_EQ(location.AppendToLocal(Vesk::Name("x y.xml")), 0);
    EXPECT_EQ(location.GetNativePath(), "/tmp/x y.xml");
    EXPECT_EQ(Utf8(location.GetName().GetText()), "x y.xml");
    EXPECT_EQ(location.GetParent().GetNativePath(), "/tmp");
    EXPECT_NE(location.AppendToLocal(Vesk::Name("a/b")), 0);
    EXPECT_NE(location.AppendToLocal(Vesk::Name("..")), 0);
    EXPECT_EQ(location.GetNativePath(), "/tmp/x y.xml");

    EXPECT_TRUE(Vesk::Location("/").GetParent().IsEmpty());
    EXPECT_NE(Vesk::Location().AppendToLocal(Vesk::Name("x")), 0);
}

TEST(VeskRelativeLocation, URLIsTheSevenCharacterPrefixAndEscapedSegments) {
    Vesk::RelativeLocation path(Vesk::Name("root"));
    Vesk::RelativeLocation tail(Vesk::Name("#text"));
    tail.Append(Vesk::Name("a b"));
    path.Append(Vesk::Name("xs:item"));
    path.Append(tail);
    Tavo::UniString url;
    path.ToURL(&url);
    EXPECT_EQ(url, Tavo::UniString("file://root/xs:item/%23text/a%20b"));
    Vesk::RelativeLocation().ToURL(&url);
    EXPECT_EQ(url, Tavo::UniString("file://"));
}
