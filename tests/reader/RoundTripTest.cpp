// Everything the output channel writes comes back through the input channel: every type at its limits
// and for random values, through memory and through a file, with tags and attributes read in another
// order than they were written.
#include "reader/ReaderTestSupport.hpp"

#include "TavoXMLUtils/interface/TavoXMLIChannelFactories.hpp"
#include "TavoXMLUtils/interface/TavoXMLInterface.hpp"
#include "TavoXMLUtils/support/GeneralTestFunction.hpp"
#include "Vesk/FileSystem.hpp"
#include "Vesk/Folder.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <vector>

using ReaderTest::FromUtf8;
using ReaderTest::Utf8;

namespace {

struct Values {
    char c = 0;
    signed char sc = 0;
    unsigned char uc = 0;
    bool b = false;
    short s = 0;
    unsigned short us = 0;
    int i = 0;
    unsigned int ui = 0;
    long l = 0;
    unsigned long ul = 0;
    long long ll = 0;
    unsigned long long ull = 0;
    float f = 0;
    double d = 0;
    std::string text;
    Tavo::Guid guid;
    Tavo::ClassVersion version;
    std::string cdata;
    std::vector<char> bytes;
};

// Reals compare by their bits, so that -0 and the exact value count; any NaN equals any NaN.
template <class Real>
bool SameReal(Real a, Real b) {
    return (std::isnan(a) && std::isnan(b)) || std::memcmp(&a, &b, sizeof a) == 0;
}

void ExpectSame(Values const& w, Values const& r) {
    EXPECT_EQ(w.c, r.c);
    EXPECT_EQ(w.sc, r.sc);
    EXPECT_EQ(w.uc, r.uc);
    EXPECT_EQ(w.b, r.b);
    EXPECT_EQ(w.s, r.s);
    EXPECT_EQ(w.us, r.us);
    EXPECT_EQ(w.i, r.i);
    EXPECT_EQ(w.ui, r.ui);
    EXPECT_EQ(w.l, r.l);
    EXPECT_EQ(w.ul, r.ul);
    EXPECT_EQ(w.ll, r.ll);
    EXPECT_EQ(w.ull, r.ull);
    EXPECT_TRUE(SameReal(w.f, r.f)) << w.f << " read as " << r.f;
    EXPECT_TRUE(SameReal(w.d, r.d)) << w.d << " read as " << r.d;
    EXPECT_EQ(w.text, r.text);
    EXPECT_EQ(w.guid, r.guid);
    EXPECT_EQ(w.version, r.version);
    EXPECT_EQ(w.cdata, r.cdata);
    EXPECT_EQ(w.bytes, r.bytes);
}

int Write(Tavo::XMLOChannel& out, Values const& v) {
    Tavo::UniString const text = FromUtf8(v.text);
    int status = out.WriteStartElement("Elements");
    status |=
        out.WriteXML("c", v.c) | out.WriteXML("sc", v.sc) | out.WriteXML("uc", v.uc) | out.WriteXML("b", v.b);
    status |=
        out.WriteXML("s", v.s) | out.WriteXML("us", v.us) | out.WriteXML("i", v.i) | out.WriteXML("ui", v.ui);
    status |= out.WriteXML("l", v.l) | out.WriteXML("ul", v.ul) | out.WriteXML("ll", v.ll);
    status |= out.WriteXML("ull", v.ull) | out.WriteXML("f", v.f) | out.WriteXML("d", v.d);
    status |= out.WriteXML("text", text) | out.WriteXML("guid", v.guid) | out.WriteEndElement();

    status |= out.WriteStartElement("Attributes") | out.WriteXMLVersionAttr(v.version);
    status |= out.WriteXMLAttr("c", v.c) | out.WriteXMLAttr("sc", v.sc) | out.WriteXMLAttr("uc", v.uc);
    status |= out.WriteXMLAttr("b", v.b) | out.WriteXMLAttr("s", v.s) | out.WriteXMLAttr("us", v.us);
    status |= out.WriteXMLAttr("f", v.f) | out.WriteXMLAttr("d", v.d) | out.WriteXMLAttr("i", v.i);
    status |= out.WriteXMLAttr("ui", v.ui) | out.WriteXMLAttr("ll", v.ll) | out.WriteXMLAttr("ull", v.ull);
    status |= out.WriteXMLAttr("text", text) | out.WriteXMLAttr("guid", v.guid) | out.WriteEndElement();

    status |= out.WriteStartElement("TextNode") | out.WriteXMLTextNode(v.d) | out.WriteEndElement();
    status |=
        out.WriteStartElement("CData") | out.WriteXMLCDATAString(FromUtf8(v.cdata)) | out.WriteEndElement();
    status |= out.WriteStartElement("Hex");
    status |= out.WriteXMLCDATABinToHex(v.bytes.data(), static_cast<unsigned int>(v.bytes.size()));
    return status | out.WriteEndElement();
}

// What came back: the element values, the attribute values, and the text node.
struct ReadBack {
    Values elements;
    Values attributes;
    double textNode = 0;
};

void ExpectReadBack(Values const& written, ReadBack read) {
    ExpectSame(written, read.elements);
    EXPECT_TRUE(SameReal(written.d, read.textNode));
    // Attributes exist for every type but long and unsigned long; sections have no attribute form.
    read.attributes.l = read.elements.l;
    read.attributes.ul = read.elements.ul;
    read.attributes.cdata = read.elements.cdata;
    read.attributes.bytes = read.elements.bytes;
    ExpectSame(written, read.attributes);
}

// Reads back in another order: the sections last to first, and within a section the fields backwards.
int Read(Tavo::XMLIChannel& in, ReadBack& r, std::size_t byteCount) {
    Values& v = r.elements;
    Values& a = r.attributes;
    Tavo::UniString text;
    int status = in.ReadStartElement("Hex");
    v.bytes.assign(byteCount, 0);
    status |= in.ReadXMLCDATAHexToBin(v.bytes.data(), static_cast<unsigned int>(byteCount));
    status |= in.ReadEndElement("Hex") | in.ReadStartElement("CData") | in.ReadXMLCDATAString(text);
    v.cdata = Utf8(text);
    status |= in.ReadEndElement("CData") | in.ReadXML("TextNode", r.textNode);

    status |=
        in.ReadStartElement("Attributes") | in.ReadXMLAttr("guid", a.guid) | in.ReadXMLAttr("text", text);
    a.text = Utf8(text);
    status |= in.ReadXMLAttr("ull", a.ull) | in.ReadXMLAttr("ll", a.ll) | in.ReadXMLAttr("ui", a.ui);
    status |= in.ReadXMLAttr("i", a.i) | in.ReadXMLAttr("d", a.d) | in.ReadXMLAttr("f", a.f);
    status |= in.ReadXMLAttr("us", a.us) | in.ReadXMLAttr("s", a.s) | in.ReadXMLAttr("b", a.b);
    status |= in.ReadXMLAttr("uc", a.uc) | in.ReadXMLAttr("sc", a.sc) | in.ReadXMLAttr("c", a.c);
    status |= in.ReadXMLVersionAttr(a.version) | in.ReadEndElement("Attributes");
    v.version = a.version;

    status |= in.ReadStartElement("Elements") | in.ReadXML("guid", v.guid) | in.ReadXML("text", text);
    v.text = Utf8(text);
    status |= in.ReadXML("d", v.d) | in.ReadXML("f", v.f) | in.ReadXML("ull", v.ull) | in.ReadXML("ll", v.ll);
    status |= in.ReadXML("ul", v.ul) | in.ReadXML("l", v.l) | in.ReadXML("ui", v.ui) | in.ReadXML("i", v.i);
    status |= in.ReadXML("us", v.us) | in.ReadXML("s", v.s) | in.ReadXML("b", v.b) | in.ReadXML("uc", v.uc);
    return status | in.ReadXML("sc", v.sc) | in.ReadXML("c", v.c) | in.ReadEndElement("Elements");
}

// One document through memory: written, exported as UTF-8, parsed again.
ReadBack ThroughMemory(Values const& written) {
    Tavo::XMLOChannel* out = TavoXML::CreateXMLOChannel("Values", TavoXML::ThrowOnError);
    EXPECT_EQ(out->WriteStartDocument(), Tavo::NoError);
    EXPECT_EQ(Write(*out, written), Tavo::NoError);
    EXPECT_EQ(out->WriteEndDocument(), Tavo::NoError);
    std::string bytes;
    TavoXML::ExportOChannel(out, [&](char const* data, unsigned int size) { bytes.assign(data, size); });
    TavoXML::DisposeXMLOChannel(out);

    Tavo::XMLIChannel* in = TavoXML::CreateXMLIChannelFromMemory(
        reinterpret_cast<unsigned char const*>(bytes.data()), static_cast<unsigned int>(bytes.size()),
        "Values", TavoXML::ThrowOnError);
    ReadBack read;
    EXPECT_EQ(Read(*in, read, written.bytes.size()), Tavo::NoError) << bytes;
    EXPECT_EQ(in->GetNumberOfMessage(), 0);
    TavoXML::DisposeXMLIChannel(in);
    return read;
}

Values Limits(bool low) {
    Values v;
    auto pick = [low](auto type) {
        using T = decltype(type);
        return low ? std::numeric_limits<T>::lowest() : std::numeric_limits<T>::max();
    };
    v.c = pick(char());
    v.sc = pick((signed char)0);
    v.uc = pick((unsigned char)0);
    v.b = !low;
    v.s = pick(short());
    v.us = pick((unsigned short)0);
    v.i = pick(int());
    v.ui = pick(0u);
    v.l = pick(0L);
    v.ul = pick(0UL);
    v.ll = pick(0LL);
    v.ull = pick(0ULL);
    v.f = low ? std::numeric_limits<float>::denorm_min() : std::numeric_limits<float>::max();
    v.d = low ? -std::numeric_limits<double>::denorm_min() : std::numeric_limits<double>::lowest();
    // Element texts stay in the Basic Multilingual Plane: the output channel's validation of element
    // texts refuses surrogate pairs. Sections take any character.
    v.text = low ? "" : "  <&>\"' \xC3\xBC\xE2\x82\xAC\xE6\x97\xA5 \t\n end  ";
    v.guid = low ? Tavo::Guid() : Tavo::Guid::Generate();
    v.version = low ? Tavo::ClassVersion(0, 0) : Tavo::ClassVersion(255, 128);
    v.cdata = low ? "" : "<not markup> & \xE2\x82\xAC\xF0\x9F\x98\x80\nline two";
    v.bytes = low ? std::vector<char>{} : std::vector<char>{0, char(0xFF), 0x7F, char(0x80), '\n'};
    return v;
}

// Random text from pieces that matter to XML; the last piece, outside the Basic Multilingual Plane, only
// where `anyPlane` is set.
std::string RandomText(std::mt19937_64& random, bool anyPlane) {
    static char const* const pieces[] = {"a",
                                         "Z",
                                         "0",
                                         " ",
                                         "\t",
                                         "\n",
                                         "<",
                                         ">",
                                         "&",
                                         "\"",
                                         "'",
                                         "\xC3\xBC",
                                         "\xE2\x82\xAC",
                                         "\xE6\x97\xA5",
                                         "]",
                                         "x y",
                                         "\xF0\x9F\x98\x80"};
    std::string text;
    for (std::size_t n = random() % 24; n > 0; --n) {
        text += pieces[random() % (std::size(pieces) - (anyPlane ? 0 : 1))];
    }
    return text;
}

Values RandomValues(std::mt19937_64& random) {
    Values v;
    std::uint64_t bits = random();
    v.c = static_cast<char>(bits);
    v.sc = static_cast<signed char>(bits >> 8);
    v.uc = static_cast<unsigned char>(bits >> 16);
    v.b = (bits >> 24) & 1;
    v.s = static_cast<short>(bits >> 32);
    v.us = static_cast<unsigned short>(bits >> 48);
    v.i = static_cast<int>(random());
    v.ui = static_cast<unsigned int>(random());
    v.l = static_cast<long>(random());
    v.ul = static_cast<unsigned long>(random());
    v.ll = static_cast<long long>(random());
    v.ull = random();
    // Reals from random bit patterns cover every exponent; infinities and NaN are left to the limits.
    do {
        bits = random();
        std::memcpy(&v.d, &bits, sizeof v.d);
    } while (!std::isfinite(v.d));
    do {
        auto const small = static_cast<std::uint32_t>(random());
        std::memcpy(&v.f, &small, sizeof v.f);
    } while (!std::isfinite(v.f));
    v.text = RandomText(random, false);
    v.guid = Tavo::Guid::Generate();
    v.version =
        Tavo::ClassVersion(static_cast<unsigned char>(random()), static_cast<unsigned char>(random()));
    v.cdata = RandomText(random, true);
    v.bytes.resize(random() % 40);
    for (char& byte : v.bytes) {
        byte = static_cast<char>(random());
    }
    return v;
}

} // namespace

TEST(RoundTrip, LimitsThroughMemory) {
    for (bool low : {true, false}) {
        Values const written = Limits(low);
        ExpectReadBack(written, ThroughMemory(written));
    }
}

TEST(RoundTrip, RandomValuesThroughMemory) {
    std::mt19937_64 random(20261121);
    for (int round = 0; round < 40; ++round) {
        SCOPED_TRACE(round);
        Values const written = RandomValues(random);
        ExpectReadBack(written, ThroughMemory(written));
    }
}

TEST(RoundTrip, ThroughAFile) {
    // A file of its own, so that other programs running the harness's fixed file are not in the way.
    Vesk::Location folder;
    ASSERT_EQ(Vesk::fileSystem.GetSpecialLocation(12, &folder), 0u);
    Vesk::Name name;
    ASSERT_EQ(Vesk::Folder(folder, 0).GenerateUnusedName(&name, "RoundTrip_", ".xml"), 0u);
    Vesk::Location location = folder;
    location.AppendToLocal(name);

    std::mt19937_64 random(7);
    for (Values const& written : {Limits(false), RandomValues(random)}) {
        ReadBack read;
        EXPECT_EQ(GeneralTestFunction::WriteToXMLFile(
                      location, [&](Tavo::XMLOChannel& out) { return Write(out, written); }),
                  Tavo::NoError);
        EXPECT_EQ(GeneralTestFunction::ReadFromXMLFile(
                      location, [&](Tavo::XMLIChannel& in) { return Read(in, read, written.bytes.size()); }),
                  Tavo::NoError);
        ExpectReadBack(written, read);
    }
    EXPECT_EQ(Vesk::fileSystem.Delete(location, 0, 2), 0u);
}

TEST(RoundTrip, SpecialRealsAndLineEnds) {
    Tavo::XMLOChannel* out = TavoXML::CreateXMLOChannel("r", TavoXML::ThrowOnError);
    double const specials[] = {std::numeric_limits<double>::infinity(),
                               -std::numeric_limits<double>::infinity(),
                               std::numeric_limits<double>::quiet_NaN(),
                               -0.0,
                               0.1,
                               1e308,
                               5e-324};
    for (double value : specials) {
        out->WriteXML("real", value);
    }
    out->WriteXML("lines", Tavo::UniString(u"a\r\nb\rc\nd"));
    Tavo::UniString const exported = TavoXML::ExportOChannelToUniString(out);
    TavoXML::DisposeXMLOChannel(out);

    // The text form of the factory parses the exported string as UTF-8.
    Tavo::XMLIChannel* in = TavoXML::CreateXMLIChannelFromMemory(exported, "r", TavoXML::ThrowOnError);
    for (double value : specials) {
        double read = 42;
        // Each search starts behind the element read before, so equal names come in document order.
        ASSERT_EQ(in->ReadXML("real", read), Tavo::NoError) << value;
        EXPECT_TRUE(SameReal(value, read)) << value << " read as " << read;
    }
    Tavo::UniString lines;
    EXPECT_EQ(in->ReadXML("lines", lines), Tavo::NoError);
    EXPECT_EQ(Utf8(lines), "a\nb\nc\nd");
    TavoXML::DisposeXMLIChannel(in);
}
