// XMLPrint: the escaping and transcoding printer of the document formatter, and XMLPrintTarget, which
// hands its bytes to a Tavo::OChannel. Library-internal.
//
// State: the printer holds a transcoder (not owned), one block of blockSize + 1 bytes that every piece
// of text is transcoded into, the line end transcoded once, the five entity references transcoded on
// first use and kept, the current default escape and unrepresentable-character flags, and the last two
// units that passed unescaped (so that "]]>" is caught across calls). Text is printed in runs up to the
// next character that needs handling, never one character at a time.
//
// Failure: a failed allocation of the block leaves InitOk() false (the printer must not be used then).
// Transcoding under UnRep_Fail throws the transcoder's TranscodingException for an unrepresentable
// character, as does a transcoder that makes no progress on a piece (a lone surrogate at the end of a
// run). XMLPrintTarget turns a non-zero WriteBin status into ok == false and sends nothing more.
#pragma once

#include "TavoRoot/UniString.hpp"

#include <xercesc/util/TransService.hpp>

#include <cstdint>

namespace Tavo {
class OChannel;
}

namespace TavoXML::detail {

class XMLPrint {
public:
    // Which characters are handled specially; the line feed is in every row.
    enum EscapeFlags { NoEscapes = 0, AttrEscapes = 1, CharEscapes = 2, DefaultEscape = 999 };
    // What happens to a character that the encoding cannot represent.
    enum UnRepFlags { UnRep_Fail = 0, UnRep_CharRef = 1, UnRep_Replace = 2, DefaultUnRep = 999 };

    XMLPrint(xercesc::XMLTranscoder& transcoder, bool crlf, EscapeFlags escapeFlags, UnRepFlags unRepFlags);
    XMLPrint(XMLPrint const&) = delete;
    XMLPrint& operator=(XMLPrint const&) = delete;

    bool InitOk() const noexcept { return buffer != nullptr; }

    void formatBuf(unsigned short const* text, unsigned long count, EscapeFlags escape = DefaultEscape,
                   UnRepFlags unRep = DefaultUnRep);
    void specialFormat(unsigned short const* text, unsigned int count, EscapeFlags escape);

    void printAmpRef();
    void printAposRef();
    void printQuoteRef();
    void printGTRef();
    void printLTRef();

    // A null or empty text prints nothing.
    XMLPrint& operator<<(unsigned short const* text);
    XMLPrint& operator<<(unsigned short unit);

    virtual void PrintTarget(unsigned char const* bytes, unsigned long count) = 0;

    // The formatter's walk sets the default directly.
    EscapeFlags escapeFlags;

protected:
    // Not virtual: a printer is never deleted through this class.
    ~XMLPrint();

private:
    // One cached entity reference in transcoded form.
    struct Ref {
        unsigned char* bytes = nullptr;
        std::uint32_t length = 0;
    };

    // Transcodes `count` units in pieces of at most blockSize units and prints each piece.
    void printRun(XMLCh const* text, unsigned long count, xercesc::XMLTranscoder::UnRepOpts option);
    void printSpecial(unsigned short unit);
    void printRef(Ref& ref, XMLCh const* text, unsigned int length);
    // The transcoder's canTranscodeTo, asked once per unit below 256 and kept.
    bool canTranscode(unsigned short unit);
    // True for a unit below 256 that canTranscode already found representable.
    bool knownRepresentable(unsigned short unit) const noexcept;

    xercesc::XMLTranscoder* transcoder;
    unsigned char eolBytes[10];
    std::uint32_t eolLength = 0;
    unsigned short lastChar = 0;
    unsigned short previousChar = 0;
    std::uint32_t blockSize;
    UnRepFlags unRepFlags;
    unsigned char* buffer;
    Ref aposRef, ampRef, gtRef, ltRef, quoteRef;
    std::uint64_t latin1Known[4] = {};
    std::uint64_t latin1Representable[4] = {};
};

XMLPrint& operator<<(XMLPrint& printer, Tavo::UniString const& text);

class XMLPrintTarget final : public XMLPrint {
public:
    XMLPrintTarget(xercesc::XMLTranscoder& transcoder, bool crlf, EscapeFlags escapeFlags,
                   UnRepFlags unRepFlags, Tavo::OChannel* channel);
    ~XMLPrintTarget() = default;

    // Sends the bytes while every write so far succeeded.
    void PrintTarget(unsigned char const* bytes, unsigned long count) override;

    bool ok = true;

private:
    Tavo::OChannel* channel;
};

} // namespace TavoXML::detail
