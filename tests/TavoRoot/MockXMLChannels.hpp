// gmock doubles of the two abstract XML channels. Every pure operation is mocked, so a strict double
// fails on any call that a test did not expect; the operations the channel classes implement
// themselves stay real and are the ones under test.
#pragma once

#include "TavoRoot/XMLIChannel.hpp"
#include "TavoRoot/XMLOChannel.hpp"

#include <gmock/gmock.h>

#include <memory>
#include <ostream>

namespace Tavo {

// Readable strings in gtest's failure messages.
inline void PrintTo(UniString const& text, std::ostream* os) {
    std::unique_ptr<char[]> const utf8(text.CopyUTF8());
    *os << '"' << utf8.get() << '"';
}

class MockXMLOChannel : public XMLOChannel {
public:
    using XMLOChannel::WriteXML;
    using XMLOChannel::WriteXMLAttr;
    using XMLOChannel::WriteXMLCDATABinToHex;
    using XMLOChannel::WriteXMLCDATAString;
    using XMLOChannel::WriteXMLTextNode;

    MOCK_METHOD(void, SetXMLShemaVersion, (ClassVersion const&), (override));
    MOCK_METHOD(void, GetXMLShemaVersion, (ClassVersion&), (override));
    MOCK_METHOD(bool, GetLocation, (Vesk::Location&), (override));
    MOCK_METHOD(int, WriteStartDocument, (), (override));
    MOCK_METHOD(int, WriteEndDocument, (), (override));
    MOCK_METHOD(int, WriteStartElement, (char const*), (override));
    MOCK_METHOD(int, WriteEndElement, (), (override));
    MOCK_METHOD(int, WriteXML, (char const*, char), (override));
    MOCK_METHOD(int, WriteXML, (char const*, signed char), (override));
    MOCK_METHOD(int, WriteXML, (char const*, unsigned char), (override));
    MOCK_METHOD(int, WriteXML, (char const*, short), (override));
    MOCK_METHOD(int, WriteXML, (char const*, unsigned short), (override));
    MOCK_METHOD(int, WriteXML, (char const*, int), (override));
    MOCK_METHOD(int, WriteXML, (char const*, unsigned int), (override));
    MOCK_METHOD(int, WriteXML, (char const*, long), (override));
    MOCK_METHOD(int, WriteXML, (char const*, unsigned long), (override));
    MOCK_METHOD(int, WriteXML, (char const*, long long), (override));
    MOCK_METHOD(int, WriteXML, (char const*, unsigned long long), (override));
    MOCK_METHOD(int, WriteXML, (char const*, UniString const&), (override));
    MOCK_METHOD(int, WriteXML, (char const*, Guid const&), (override));
    MOCK_METHOD(int, WriteXMLTextNode, (UniString const&), (override));
    MOCK_METHOD(int, WriteXMLCDATAString, (UniString const&), (override));
    MOCK_METHOD(int, WriteXMLVersionAttr, (ClassVersion const&), (override));
    MOCK_METHOD(int, WriteXMLAttr, (char const*, char), (override));
    MOCK_METHOD(int, WriteXMLAttr, (char const*, signed char), (override));
    MOCK_METHOD(int, WriteXMLAttr, (char const*, unsigned char), (override));
    MOCK_METHOD(int, WriteXMLAttr, (char const*, short), (override));
    MOCK_METHOD(int, WriteXMLAttr, (char const*, unsigned short), (override));
    MOCK_METHOD(int, WriteXMLAttr, (char const*, int), (override));
    MOCK_METHOD(int, WriteXMLAttr, (char const*, unsigned int), (override));
    MOCK_METHOD(int, WriteXMLAttr, (char const*, long long), (override));
    MOCK_METHOD(int, WriteXMLAttr, (char const*, unsigned long long), (override));
    MOCK_METHOD(int, WriteXMLAttr, (char const*, UniString const&), (override));
    MOCK_METHOD(int, WriteXMLAttr, (char const*, Guid const&), (override));
    MOCK_METHOD(int, WriteComment, (UniString const&), (override));
    MOCK_METHOD(void, AddMessage, (UniString const&), (override));
    MOCK_METHOD(int, GetNumberOfMessage, (), (override));
    MOCK_METHOD(void, GetMessage, (int, UniString&, int&), (override));
};

class MockXMLIChannel : public XMLIChannel {
public:
    using XMLIChannel::ReadXMLCDATAHexToBin;
    using XMLIChannel::ReadXMLCDATAString;

    MOCK_METHOD(int, GetErrorStatus, (), (override));
    MOCK_METHOD(void, ClearErrorStatus, (), (override));
    MOCK_METHOD(void, SetXMLShemaVersion, (ClassVersion const&), (override));
    MOCK_METHOD(void, GetXMLShemaVersion, (ClassVersion&), (override));
    MOCK_METHOD(bool, GetLocation, (Vesk::Location&), (override));
    MOCK_METHOD(XMLTokenType, GetTokenType, (), (override));
    MOCK_METHOD(XMLTokenType, GetNextTokenType, (), (override));
    MOCK_METHOD(XMLTokenType, GetTokenTypeName, (UniString&), (override));
    MOCK_METHOD(XMLTokenType, GetNextTokenTypeName, (UniString&), (override));
    MOCK_METHOD(int, ReadStartElement, (char const*), (override));
    MOCK_METHOD(int, ReadEndElement, (char const*), (override));
    MOCK_METHOD(int, ReadToken, (unsigned int), (override));
    MOCK_METHOD(bool, HasXMLTag, (char const*), (override));
    MOCK_METHOD(int, ReadXML, (char const*, char&), (override));
    MOCK_METHOD(int, ReadXML, (char const*, signed char&), (override));
    MOCK_METHOD(int, ReadXML, (char const*, unsigned char&), (override));
    MOCK_METHOD(int, ReadXML, (char const*, bool&), (override));
    MOCK_METHOD(int, ReadXML, (char const*, short&), (override));
    MOCK_METHOD(int, ReadXML, (char const*, unsigned short&), (override));
    MOCK_METHOD(int, ReadXML, (char const*, int&), (override));
    MOCK_METHOD(int, ReadXML, (char const*, unsigned int&), (override));
    MOCK_METHOD(int, ReadXML, (char const*, long&), (override));
    MOCK_METHOD(int, ReadXML, (char const*, unsigned long&), (override));
    MOCK_METHOD(int, ReadXML, (char const*, long long&), (override));
    MOCK_METHOD(int, ReadXML, (char const*, unsigned long long&), (override));
    MOCK_METHOD(int, ReadXML, (char const*, float&), (override));
    MOCK_METHOD(int, ReadXML, (char const*, double&), (override));
    MOCK_METHOD(int, ReadXML, (char const*, char*, unsigned int), (override));
    MOCK_METHOD(int, ReadXML, (char const*, UniString&), (override));
    MOCK_METHOD(int, ReadXML, (char const*, Guid&), (override));
    MOCK_METHOD(int, ReadXMLCDATAString, (UniString&), (override));
    MOCK_METHOD(bool, HasXMLAttr, (char const*), (override));
    MOCK_METHOD(int, ReadXMLVersionAttr, (ClassVersion&), (override));
    MOCK_METHOD(int, ReadXMLAttr, (char const*, char&), (override));
    MOCK_METHOD(int, ReadXMLAttr, (char const*, signed char&), (override));
    MOCK_METHOD(int, ReadXMLAttr, (char const*, unsigned char&), (override));
    MOCK_METHOD(int, ReadXMLAttr, (char const*, bool&), (override));
    MOCK_METHOD(int, ReadXMLAttr, (char const*, short&), (override));
    MOCK_METHOD(int, ReadXMLAttr, (char const*, unsigned short&), (override));
    MOCK_METHOD(int, ReadXMLAttr, (char const*, float&), (override));
    MOCK_METHOD(int, ReadXMLAttr, (char const*, double&), (override));
    MOCK_METHOD(int, ReadXMLAttr, (char const*, char*, unsigned int), (override));
    MOCK_METHOD(int, ReadXMLAttr, (char const*, int&), (override));
    MOCK_METHOD(int, ReadXMLAttr, (char const*, unsigned int&), (override));
    MOCK_METHOD(int, ReadXMLAttr, (char const*, long long&), (override));
    MOCK_METHOD(int, ReadXMLAttr, (char const*, unsigned long long&), (override));
    MOCK_METHOD(int, ReadXMLAttr, (char const*, UniString&), (override));
    MOCK_METHOD(int, ReadXMLAttr, (char const*, Guid&), (override));
    MOCK_METHOD(PlatformSign, GetChannelPlatform, (), (override));
    MOCK_METHOD(void, SetChannelPlatform, (PlatformSign), (override));
    MOCK_METHOD(unsigned int, GetActLineNumber, (), (override));
    MOCK_METHOD(void, AddMessage, (UniString const&), (override));
    MOCK_METHOD(int, GetNumberOfMessage, (), (override));
    MOCK_METHOD(void, GetMessage, (int, UniString&, int&), (override));
};

} // namespace Tavo
