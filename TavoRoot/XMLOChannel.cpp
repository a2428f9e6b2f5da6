#include "TavoRoot/XMLOChannel.hpp"

#include "TavoRoot/Handle.hpp"
#include "TavoRoot/Numbers.hpp"
#include "TavoRoot/internal/HexDigits.hpp"

#include <string>

namespace Tavo {

namespace {

UniString BoolText(bool value) {
    return UniString(value ? "true" : "false");
}

// Text in the default character code; a length of 0 means up to the terminating zero.
UniString CText(char const* text, unsigned int length) {
    if (!text) {
        return UniString();
    }
    return length == 0 ? UniString(text, TavoCharCodeDefault) : UniString(text, length, TavoCharCodeDefault);
}

// Every byte as two upper-case hex digits.
UniString HexText(char const* data, unsigned int length) {
    std::u16string text;
    text.reserve(std::size_t(length) * 2);
    for (unsigned int i = 0; i < length; ++i) {
        HexDigits::AppendByte(text, static_cast<unsigned char>(data[i]));
    }
    return UniString(std::u16string_view(text));
}

} // namespace

XMLOChannel::~XMLOChannel() = default;

int XMLOChannel::WriteXML(char const* name, bool value) {
    return WriteXML(name, BoolText(value));
}
int XMLOChannel::WriteXML(char const* name, float value) {
    return WriteXML(name, ValueToUniString(value));
}
int XMLOChannel::WriteXML(char const* name, double value) {
    return WriteXML(name, ValueToUniString(value));
}
int XMLOChannel::WriteXML(char const* name, char const* value, unsigned int length) {
    return WriteXML(name, CText(value, length));
}

// The three char types are small numbers, not characters.
int XMLOChannel::WriteXMLTextNode(char value) {
    return WriteXMLTextNode(ValueToUniString(int(value)));
}
int XMLOChannel::WriteXMLTextNode(signed char value) {
    return WriteXMLTextNode(ValueToUniString(int(value)));
}
int XMLOChannel::WriteXMLTextNode(unsigned char value) {
    return WriteXMLTextNode(ValueToUniString(static_cast<unsigned int>(value)));
}
int XMLOChannel::WriteXMLTextNode(bool value) {
    return WriteXMLTextNode(BoolText(value));
}
int XMLOChannel::WriteXMLTextNode(short value) {
    return WriteXMLTextNode(ValueToUniString(value));
}
int XMLOChannel::WriteXMLTextNode(unsigned short value) {
    return WriteXMLTextNode(ValueToUniString(value));
}
int XMLOChannel::WriteXMLTextNode(int value) {
    return WriteXMLTextNode(ValueToUniString(value));
}
int XMLOChannel::WriteXMLTextNode(unsigned int value) {
    return WriteXMLTextNode(ValueToUniString(value));
}
int XMLOChannel::WriteXMLTextNode(long value) {
    return WriteXMLTextNode(ValueToUniString(value));
}
int XMLOChannel::WriteXMLTextNode(unsigned long value) {
    return WriteXMLTextNode(ValueToUniString(value));
}
int XMLOChannel::WriteXMLTextNode(long long value) {
    return WriteXMLTextNode(ValueToUniString(value));
}
int XMLOChannel::WriteXMLTextNode(unsigned long long value) {
    return WriteXMLTextNode(ValueToUniString(value));
}
int XMLOChannel::WriteXMLTextNode(float value) {
    return WriteXMLTextNode(ValueToUniString(value));
}
int XMLOChannel::WriteXMLTextNode(double value) {
    return WriteXMLTextNode(ValueToUniString(value));
}
int XMLOChannel::WriteXMLTextNode(char const* text, unsigned int length) {
    return WriteXMLTextNode(CText(text, length));
}

int XMLOChannel::WriteXMLCDATABinToHex(char const* data, unsigned int length) {
    if (!data && length != 0) {
        return GeneralError;
    }
    return WriteXMLCDATAString(HexText(data, length));
}

int XMLOChannel::WriteXMLCDATABinToHex(char** handle) {
    if (!handle) {
        return GeneralError;
    }
    return WriteXMLCDATAString(HexText(*handle, GetHandleSize(handle)));
}

int XMLOChannel::WriteXMLCDATAString(char const* text, unsigned int length) {
    return WriteXMLCDATAString(CText(text, length));
}

int XMLOChannel::WriteXMLAttr(char const* name, bool value) {
    return WriteXMLAttr(name, BoolText(value));
}
int XMLOChannel::WriteXMLAttr(char const* name, float value) {
    return WriteXMLAttr(name, ValueToUniString(value));
}
int XMLOChannel::WriteXMLAttr(char const* name, double value) {
    return WriteXMLAttr(name, ValueToUniString(value));
}
int XMLOChannel::WriteXMLAttr(char const* name, char const* value, unsigned int length) {
    return WriteXMLAttr(name, CText(value, length));
}

int XMLOChannel::WriteXML(char const* name, char const* value) {
    return WriteXML(name, UniString(value, TavoCharCodeDefault));
}
int XMLOChannel::WriteXMLTextNode(char const* text) {
    return WriteXMLTextNode(UniString(text, TavoCharCodeDefault));
}
int XMLOChannel::WriteXMLAttr(char const* name, char const* value) {
    return WriteXMLAttr(name, UniString(value, TavoCharCodeDefault));
}

} // namespace Tavo
