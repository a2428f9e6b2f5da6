// Hand-written doubles of the two abstract XML channels. The funnels record what reaches them; every
// other pure operation does nothing. Callers use the base classes, whose own overloads these hide.
#pragma once

#include "TavoRoot/XMLIChannel.hpp"
#include "TavoRoot/XMLOChannel.hpp"

#include <memory>
#include <stdexcept>
#include <string>

namespace Tavo {

// clang-format off
#define TAVO_IGNORED(name, ...)                                                                              \
    int name(char const*, __VA_ARGS__) override { return 0; }                                              \
    int name##Attr(char const*, __VA_ARGS__) override { return 0; }
#define TAVO_IGNORED_COMMON                                                                                  \
    void SetXMLShemaVersion(ClassVersion const&) override {}                                                 \
    void GetXMLShemaVersion(ClassVersion&) override {}                                                       \
    bool GetLocation(Vesk::Location&) override { return false; }                                             \
    void AddMessage(UniString const&) override {}                                                            \
    int GetNumberOfMessage() override { return 0; }                                                          \
    void GetMessage(int, UniString&, int&) override {}
// clang-format on

// Each funnel adds "<funnel> <name> <text>" to `log` and answers 7; elements are logged too.
class RecordingXMLOChannel : public XMLOChannel {
public:
    std::string log;
    bool refuseEnd = false; // WriteEndElement throws

    int WriteStartElement(char const* name) override { return Record(std::string("Start ") + name), NoError; }
    int WriteEndElement() override {
        return refuseEnd ? throw std::runtime_error("refused") : Record("End"), NoError;
    }
    int WriteXML(char const* name, UniString const& text) override { return Record("E " + Text(name, text)); }
    int WriteXMLAttr(char const* name, UniString const& text) override {
        return Record("A " + Text(name, text));
    }
    int WriteXMLTextNode(UniString const& text) override { return Record("T " + Text(nullptr, text)); }
    int WriteXMLCDATAString(UniString const& text) override { return Record("C " + Text(nullptr, text)); }

    TAVO_IGNORED_COMMON
    int WriteStartDocument() override { return 0; }
    int WriteEndDocument() override { return 0; }
    int WriteXML(char const*, long) override { return 0; }
    int WriteXML(char const*, unsigned long) override { return 0; }
    TAVO_IGNORED(WriteXML, char)
    TAVO_IGNORED(WriteXML, signed char)
    TAVO_IGNORED(WriteXML, unsigned char)
    TAVO_IGNORED(WriteXML, short)
    TAVO_IGNORED(WriteXML, unsigned short)
    TAVO_IGNORED(WriteXML, int)
    TAVO_IGNORED(WriteXML, unsigned int)
    TAVO_IGNORED(WriteXML, long long)
    TAVO_IGNORED(WriteXML, unsigned long long)
    TAVO_IGNORED(WriteXML, Guid const&)
    int WriteXMLVersionAttr(ClassVersion const&) override { return 0; }
    int WriteComment(UniString const&) override { return 0; }

private:
    static std::string Text(char const* name, UniString const& text) {
        return (name ? name + std::string(" ") : "") + std::unique_ptr<char[]>(text.CopyUTF8()).get();
    }
    int Record(std::string const& entry) {
        log += (log.empty() ? "" : "; ") + entry;
        return 7;
    }
};

// The funnel ReadXMLCDATAString(UniString&) answers `cdata` (UTF-8) and `status`.
class ScriptedXMLIChannel : public XMLIChannel {
public:
    std::string cdata;
    int status = NoError;

    int ReadXMLCDATAString(UniString& text) override {
        text = UniString(cdata.c_str(), TavoCharCodeUTF8);
        return status;
    }

    int GetErrorStatus() override { return 0; }
    void ClearErrorStatus() override {}
    TAVO_IGNORED_COMMON
    XMLTokenType GetTokenType() override { return {}; }
    XMLTokenType GetNextTokenType() override { return {}; }
    XMLTokenType GetTokenTypeName(UniString&) override { return {}; }
    XMLTokenType GetNextTokenTypeName(UniString&) override { return {}; }
    int ReadStartElement(char const*) override { return 0; }
    int ReadEndElement(char const*) override { return 0; }
    int ReadToken(unsigned int) override { return 0; }
    bool HasXMLTag(char const*) override { return false; }
    int ReadXML(char const*, long&) override { return 0; }
    int ReadXML(char const*, unsigned long&) override { return 0; }
    TAVO_IGNORED(ReadXML, char&)
    TAVO_IGNORED(ReadXML, signed char&)
    TAVO_IGNORED(ReadXML, unsigned char&)
    TAVO_IGNORED(ReadXML, bool&)
    TAVO_IGNORED(ReadXML, short&)
    TAVO_IGNORED(ReadXML, unsigned short&)
    TAVO_IGNORED(ReadXML, int&)
    TAVO_IGNORED(ReadXML, unsigned int&)
    TAVO_IGNORED(ReadXML, long long&)
    TAVO_IGNORED(ReadXML, unsigned long long&)
    TAVO_IGNORED(ReadXML, float&)
    TAVO_IGNORED(ReadXML, double&)
    TAVO_IGNORED(ReadXML, char*, unsigned int)
    TAVO_IGNORED(ReadXML, UniString&)
    TAVO_IGNORED(ReadXML, Guid&)
    bool HasXMLAttr(char const*) override { return false; }
    int ReadXMLVersionAttr(ClassVersion&) override { return 0; }
    PlatformSign GetChannelPlatform() override { return {}; }
    void SetChannelPlatform(PlatformSign) override {}
    unsigned int GetActLineNumber() override { return 0; }
};

#undef TAVO_IGNORED
#undef TAVO_IGNORED_COMMON

} // namespace Tavo
