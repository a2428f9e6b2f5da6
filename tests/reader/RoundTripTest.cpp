// Everything the output channel writes comes back through the input channel: every type at its limits,
// through memory and through a file, read in another order than written.
#include "common/TestText.hpp"

#include "TavoXMLUtils/interface/TavoXMLIChannelFactories.hpp"
#include "TavoXMLUtils/interface/TavoXMLInterface.hpp"
#include "TavoXMLUtils/support/GeneralTestFunction.hpp"
#include "Vesk/Location.hpp"
#include "common/TempFolder.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <iterator>
#include <limits>
#include <random>
#include <sstream>
#include <tuple>
#include <type_traits>

using TavoTest::FromUtf8;
using TavoTest::Utf8;

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

// Calls `f` with each number's index as a compile-time constant.
template <class F>
void ForEachNumber(F const& f) {
    [&]<std::size_t... I>(std::index_sequence<I...>) {
        (f(std::integral_constant<std::size_t, I>{}), ...);
    }
    (std::make_index_sequence<std::tuple_size_v<Numbers>>{});
}

// Attributes exist for every type but long and unsigned long.
template <class T>
constexpr bool gHasAttribute =
    !std::is_same_v<std::remove_cvref_t<T>, long> && !std::is_same_v<std::remove_cvref_t<T>, unsigned long>;

// The values as text to compare: reals in hexadecimal, so that -0 and the last bit count.
std::string Dump(Values const& v, bool attributes) {
    std::ostringstream out;
    out << std::hexfloat;
    ForEachNumber([&](auto index) {
        auto const value = std::get<index>(v.numbers);
        if (gHasAttribute<decltype(value)> || !attributes) {
            out << gNames[index] << '=' << +value << ' ';
        }
    });
    out << Utf8(v.guid.ToUniString()) << " v" << int(v.version.mainVersion) << '.'
        << int(v.version.subVersion) << " [" << v.text << ']';
    if (!attributes) {
        out << " [" << v.cdata << "] " << ::testing::PrintToString(v.bytes);
    }
    return out.str();
}

int Write(Tavo::XMLOChannel& out, Values const& v) {
    Tavo::UniString const text = FromUtf8(v.text);
    int status = out.WriteStartElement("Elements");
    ForEachNumber([&](auto index) { status |= out.WriteXML(gNames[index], std::get<index>(v.numbers)); });
    status |= out.WriteXML("text", text);
    status |= out.WriteXML("guid", v.guid);
    status |= out.WriteEndElement();
    status |= out.WriteStartElement("Attributes");
    status |= out.WriteXMLVersionAttr(v.version);
    ForEachNumber([&](auto index) {
        auto const value = std::get<index>(v.numbers);
        if constexpr (gHasAttribute<decltype(value)>) {
            status |= out.WriteXMLAttr(gNames[index], value);
        }
    });
    status |= out.WriteXMLAttr("text", text);
    status |= out.WriteXMLAttr("guid", v.guid);
    status |= out.WriteEndElement();
    status |= out.WriteStartElement("TextNode");
    status |= out.WriteXMLTextNode(std::get<double>(v.numbers));
    status |= out.WriteEndElement();
    status |= out.WriteStartElement("CData");
    status |= out.WriteXMLCDATAString(FromUtf8(v.cdata));
    status |= out.WriteEndElement();
    status |= out.WriteStartElement("Hex");
    status |= out.WriteXMLCDATABinToHex(v.bytes.data(), static_cast<unsigned int>(v.bytes.size()));
    return status | out.WriteEndElement();
}

struct ReadBack {
    Values elements;
    Values attributes;
    double textNode = 0;
};

void ExpectReadBack(Values const& written, ReadBack const& read) {
    EXPECT_EQ(Dump(written, false), Dump(read.elements, false));
    EXPECT_EQ(Dump(written, true), Dump(read.attributes, true));
    auto const hex = [](double value) { return (std::ostringstream() << std::hexfloat << value).str(); };
    EXPECT_EQ(hex(std::get<double>(written.numbers)), hex(read.textNode)) << "text node";
}

// Reads back in another order: the sections last to first, guid and text before the numbers.
int Read(Tavo::XMLIChannel& in, ReadBack& r, std::size_t byteCount) {
    Values& v = r.elements;
    Values& a = r.attributes;
    Tavo::UniString text;
    int status = in.ReadStartElement("Hex");
    v.bytes.assign(byteCount, 0);
    status |= in.ReadXMLCDATAHexToBin(v.bytes.data(), static_cast<unsigned int>(byteCount));
    status |= in.ReadEndElement("Hex");
    status |= in.ReadStartElement("CData");
    status |= in.ReadXMLCDATAString(text);
    v.cdata = Utf8(text);
    status |= in.ReadEndElement("CData");
    status |= in.ReadXML("TextNode", r.textNode);
    status |= in.ReadStartElement("Attributes");
    status |= in.ReadXMLAttr("guid", a.guid);
    status |= in.ReadXMLAttr("text", text);
    a.text = Utf8(text);
    ForEachNumber([&](auto index) {
        auto& value = std::get<index>(a.numbers);
        if constexpr (gHasAttribute<decltype(value)>) {
            status |= in.ReadXMLAttr(gNames[index], value);
        }
    });
    status |= in.ReadXMLVersionAttr(a.version);
    status |= in.ReadEndElement("Attributes");
    v.version = a.version;
    status |= in.ReadStartElement("Elements");
    status |= in.ReadXML("guid", v.guid);
    status |= in.ReadXML("text", text);
    v.text = Utf8(text);
    ForEachNumber([&](auto index) { status |= in.ReadXML(gNames[index], std::get<index>(v.numbers)); });
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
    // Element texts refuse surrogate pairs on output; sections take any character.
    v.text = low ? "" : "  <&>\"' \xC3\xBC\xE2\x82\xAC\xE6\x97\xA5 \t\n end  ";
    v.guid = low ? Tavo::Guid() : Tavo::Guid::Generate();
    v.version = low ? Tavo::ClassVersion(0, 0) : Tavo::ClassVersion(255, 128);
    v.cdata = low ? "" : "<not markup> & \xE2\x82\xAC\xF0\x9F\x98\x80\nline two";
    v.bytes = low ? std::vector<char>{} : std::vector<char>{0, char(0xFF), 0x7F, char(0x80), '\n'};
    return v;
}

} // namespace

TEST(RoundTrip, LimitsThroughMemory) {
    Values specials = Limits(false);
    std::get<float>(specials.numbers) = -0.0f;
    std::get<double>(specials.numbers) = std::numeric_limits<double>::quiet_NaN();
    Values infinite = specials;
    std::get<float>(infinite.numbers) = std::numeric_limits<float>::infinity();
    std::get<double>(infinite.numbers) = -std::numeric_limits<double>::infinity();
    for (Values const& written : {Limits(true), Limits(false), specials, infinite}) {
        ExpectReadBack(written, ThroughMemory(written));
    }
}

TEST(RoundTrip, ThroughAFile) {
    // A file of its own, so that other programs running the harness's fixed file are not in the way.
    Vesk::Location const location((TavoTest::TestTempFolder() / "RoundTrip.xml").c_str());
    Values const written = Limits(false);
    ReadBack read;
    EXPECT_EQ(GeneralTestFunction::WriteToXMLFile(
                  location, [&](Tavo::XMLOChannel& out) { return Write(out, written); }),
              Tavo::NoError);
    EXPECT_EQ(GeneralTestFunction::ReadFromXMLFile(
                  location, [&](Tavo::XMLIChannel& in) { return Read(in, read, written.bytes.size()); }),
              Tavo::NoError);
    ExpectReadBack(written, read);
}

// Random values of every type, and texts with line ends: element texts come back with CR LF and lone
// CR turned into LF by the writer, attribute texts unchanged.
TEST(RoundTrip, RandomValuesAndLineEndsThroughMemory) {
    std::mt19937_64 random(20261122);
    char const* const pieces[] = {"a",    "Z",  " ",  "<",        "&",           "\t",
                                  "\r\n", "\r", "\n", "\xC3\xA9", "\xE2\x82\xAC"};
    for (int round = 0; round < 25; ++round) {
        Values written = Limits(false);
        ForEachNumber([&](auto index) {
            auto& value = std::get<index>(written.numbers);
            using T = std::remove_reference_t<decltype(value)>;
            if constexpr (std::is_floating_point_v<T>) {
                do {
                    auto const bits = random();
                    std::memcpy(&value, &bits, sizeof value);
                } while (!std::isfinite(value));
            } else {
                value = static_cast<T>(random());
            }
        });
        written.text.clear();
        for (int i = 0; i < 12; ++i) {
            written.text += pieces[random() % std::size(pieces)];
        }
        ReadBack const read = ThroughMemory(written);
        Values expected = written;
        expected.text.clear();
        for (std::size_t i = 0; i < written.text.size(); ++i) {
            bool const crlf =
                written.text[i] == '\r' && i + 1 < written.text.size() && written.text[i + 1] == '\n';
            expected.text += written.text[i] == '\r' ? '\n' : written.text[i];
            i += crlf ? 1 : 0;
        }
        EXPECT_EQ(Dump(expected, false), Dump(read.elements, false));
        EXPECT_EQ(Dump(written, true), Dump(read.attributes, true));
    }
}
