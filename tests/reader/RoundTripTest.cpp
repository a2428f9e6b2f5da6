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
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

using ReaderTest::FromUtf8;
using ReaderTest::Utf8;

namespace {

// The numbers are a tuple, so that one loop over the names handles every type.
using Numbers = std::tuple<char, signed char, unsigned char, bool, short, unsigned short, int, unsigned int,
                           long, unsigned long, long long, unsigned long long, float, double>;
constexpr char const* gNames[] = {"c",  "sc", "uc", "b",  "s",   "us", "i",
                                  "ui", "l",  "ul", "ll", "ull", "f",  "d"};

struct Values {
    Numbers numbers{};
    std::string text;
    Tavo::Guid guid;
    Tavo::ClassVersion version;
    std::string cdata;
    std::vector<char> bytes;
};

// Calls `f` with each number's index as a compile-time constant, in written order or backwards.
template <class F>
void ForEachNumber(F const& f, bool backwards = false) {
    constexpr std::size_t count = std::tuple_size_v<Numbers>;
    [&]<std::size_t... I>(std::index_sequence<I...>) {
        if (backwards) {
            (f(std::integral_constant<std::size_t, count - 1 - I>{}), ...);
        } else {
            (f(std::integral_constant<std::size_t, I>{}), ...);
        }
    }
    (std::make_index_sequence<count>{});
}

// Attributes exist for every type but long and unsigned long.
template <class T>
constexpr bool gHasAttribute =
    !std::is_same_v<std::remove_cvref_t<T>, long> && !std::is_same_v<std::remove_cvref_t<T>, unsigned long>;

// Reals compare by their bits, so that -0 and the exact value count; any NaN equals any NaN.
template <class Real>
bool SameReal(Real a, Real b) {
    return (std::isnan(a) && std::isnan(b)) || std::memcmp(&a, &b, sizeof a) == 0;
}

void ExpectSame(Values const& w, Values const& r) {
    ForEachNumber([&](auto index) {
        constexpr std::size_t I = decltype(index)::value;
        auto const written = std::get<I>(w.numbers);
        auto const read = std::get<I>(r.numbers);
        if constexpr (std::is_floating_point_v<decltype(written)>) {
            EXPECT_TRUE(SameReal(written, read)) << gNames[I] << ": " << written << " read as " << read;
        } else {
            EXPECT_EQ(written, read) << gNames[I];
        }
    });
    EXPECT_EQ(w.text, r.text);
    EXPECT_EQ(w.guid, r.guid);
    EXPECT_EQ(w.version, r.version);
    EXPECT_EQ(w.cdata, r.cdata);
    EXPECT_EQ(w.bytes, r.bytes);
}

int Write(Tavo::XMLOChannel& out, Values const& v) {
    Tavo::UniString const text = FromUtf8(v.text);
    int status = out.WriteStartElement("Elements");
    ForEachNumber([&](auto index) { status |= out.WriteXML(gNames[index], std::get<index>(v.numbers)); });
    status |= out.WriteXML("text", text) | out.WriteXML("guid", v.guid) | out.WriteEndElement();

    status |= out.WriteStartElement("Attributes") | out.WriteXMLVersionAttr(v.version);
    ForEachNumber([&](auto index) {
        auto const value = std::get<index>(v.numbers);
        if constexpr (gHasAttribute<decltype(value)>) {
            status |= out.WriteXMLAttr(gNames[index], value);
        }
    });
    status |= out.WriteXMLAttr("text", text) | out.WriteXMLAttr("guid", v.guid) | out.WriteEndElement();

    status |= out.WriteStartElement("TextNode") | out.WriteXMLTextNode(std::get<double>(v.numbers));
    status |=
        out.WriteEndElement() | out.WriteStartElement("CData") | out.WriteXMLCDATAString(FromUtf8(v.cdata));
    status |= out.WriteEndElement() | out.WriteStartElement("Hex");
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
    EXPECT_TRUE(SameReal(std::get<double>(written.numbers), read.textNode));
    // Sections and the numbers without attribute form are taken from the elements.
    std::get<long>(read.attributes.numbers) = std::get<long>(read.elements.numbers);
    std::get<unsigned long>(read.attributes.numbers) = std::get<unsigned long>(read.elements.numbers);
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
    ForEachNumber(
        [&](auto index) {
            auto& value = std::get<index>(a.numbers);
            if constexpr (gHasAttribute<decltype(value)>) {
                status |= in.ReadXMLAttr(gNames[index], value);
            }
        },
        true);
    status |= in.ReadXMLVersionAttr(a.version) | in.ReadEndElement("Attributes");
    v.version = a.version;

    status |= in.ReadStartElement("Elements") | in.ReadXML("guid", v.guid) | in.ReadXML("text", text);
    v.text = Utf8(text);
    ForEachNumber([&](auto index) { status |= in.ReadXML(gNames[index], std::get<index>(v.numbers)); }, true);
    return status | in.ReadEndElement("Elements");
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
    ForEachNumber([&](auto index) {
        auto& value = std::get<index>(v.numbers);
        using T = std::remove_reference_t<decltype(value)>;
        value = low ? std::numeric_limits<T>::lowest() : std::numeric_limits<T>::max();
    });
    std::get<float>(v.numbers) =
        low ? std::numeric_limits<float>::denorm_min() : std::numeric_limits<float>::max();
    std::get<double>(v.numbers) =
        low ? -std::numeric_limits<double>::denorm_min() : std::numeric_limits<double>::lowest();
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
    // clang-format off
    static char const* const pieces[] = {"a", "Z", "0", " ", "\t", "\n", "<", ">", "&", "\"", "'", "\xC3\xBC",
                                         "\xE2\x82\xAC", "\xE6\x97\xA5", "]", "x y", "\xF0\x9F\x98\x80"};
    // clang-format on
    std::string text;
    for (std::size_t n = random() % 24; n > 0; --n) {
        text += pieces[random() % (std::size(pieces) - (anyPlane ? 0 : 1))];
    }
    return text;
}

Values RandomValues(std::mt19937_64& random) {
    Values v;
    ForEachNumber([&](auto index) {
        auto& value = std::get<index>(v.numbers);
        using T = std::remove_reference_t<decltype(value)>;
        if constexpr (std::is_floating_point_v<T>) {
            // Reals from random bit patterns cover every exponent; infinities and NaN are left to the limits.
            using Bits = std::conditional_t<sizeof(T) == 4, std::uint32_t, std::uint64_t>;
            do {
                auto const bits = static_cast<Bits>(random());
                std::memcpy(&value, &bits, sizeof value);
            } while (!std::isfinite(value));
        } else {
            value = static_cast<T>(random() & (std::is_same_v<T, bool> ? 1 : ~0ULL));
        }
    });
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

TEST(RoundTrip, LimitsAndRandomValuesThroughMemory) {
    std::mt19937_64 random(20261121);
    std::vector<Values> cases{Limits(true), Limits(false)};
    while (cases.size() < 42) {
        cases.push_back(RandomValues(random));
    }
    for (std::size_t index = 0; index < cases.size(); ++index) {
        SCOPED_TRACE(index);
        ExpectReadBack(cases[index], ThroughMemory(cases[index]));
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
