// The document formatter's printer: escaping in runs, transcoding through one block, cached references.
#include "TavoXMLUtils/output/internal/XMLPrint.hpp"

#include "TavoRoot/OChannel.hpp"
#include "TavoXMLUtils/support/internal/Throw.hpp"
#include "TavoXMLUtils/support/internal/XMLChText.hpp"

#include <xercesc/util/TranscodingException.hpp>
#include <xercesc/util/XMLString.hpp>

#include <algorithm>
#include <cstring>
#include <new>
#include <string>

namespace TavoXML::detail {

namespace {

using xercesc::XMLTranscoder;

// The characters that end a run, by escape flags (NoEscapes, AttrEscapes, CharEscapes). The ">" of "]]>"
// is a further stop under CharEscapes, tested apart because it depends on the units before it.
constexpr XMLCh gEscapeChars[3][6] = {
    {u'\n', 0},
    {u'\n', u'&', u'<', u'"', u'\'', 0},
    {u'\n', u'&', u'<', 0},
};

constexpr XMLCh gAposRef[] = u"&apos;";
constexpr XMLCh gAmpRef[] = u"&amp;";
constexpr XMLCh gGTRef[] = u"&gt;";
constexpr XMLCh gLTRef[] = u"&lt;";
constexpr XMLCh gQuoteRef[] = u"&quot;";
// "\r\n"; its second unit alone is the line end without the carriage return.
constexpr XMLCh EOLRef[] = u"\r\n";

// A row of the table as a bit set over the units 0 to 63, where all of its characters lie; built once.
constexpr std::uint64_t RowMask(XMLCh const* row) noexcept {
    std::uint64_t mask = 0;
    for (; *row != 0; ++row) {
        mask |= std::uint64_t{1} << *row;
    }
    return mask;
}

constexpr std::uint64_t gEscapeMasks[3] = {RowMask(gEscapeChars[0]), RowMask(gEscapeChars[1]),
                                           RowMask(gEscapeChars[2])};

bool IsEscapeChar(std::uint64_t rowMask, XMLCh unit) noexcept {
    return unit < 64 && ((rowMask >> unit) & 1) != 0;
}

// A transcoder that takes no unit of a non-empty piece (a lone leading surrogate at its end) would
// otherwise loop for ever; it fails like an unrepresentable character.
[[noreturn]] void ThrowNoProgress(SourceLocation where = SourceLocation::current()) {
    std::string const file(SourceName(where));
    throw xercesc::TranscodingException(file.c_str(), where.line(), xercesc::XMLExcepts::Trans_BadSrcSeq,
                                        xercesc::XMLPlatformUtils::fgMemoryManager);
}

} // namespace

XMLPrint::XMLPrint(XMLTranscoder& transcoder, bool crlf, EscapeFlags escapeFlags, UnRepFlags unRepFlags)
    : escapeFlags(escapeFlags), transcoder(&transcoder),
      blockSize(static_cast<std::uint32_t>(transcoder.getBlockSize())), unRepFlags(unRepFlags),
      buffer(new (std::nothrow) unsigned char[static_cast<std::size_t>(blockSize) + 1]) {
    XMLCh const* eol = crlf ? EOLRef : EOLRef + 1;
    XMLSize_t const eolUnits = crlf ? 2 : 1;
    XMLSize_t eaten = 0;
    eolLength = static_cast<std::uint32_t>(transcoder.transcodeTo(eol, eolUnits, eolBytes, sizeof eolBytes,
                                                                  eaten, XMLTranscoder::UnRep_RepChar));
}

XMLPrint::~XMLPrint() {
    delete[] buffer;
    for (Ref* ref : {&aposRef, &ampRef, &gtRef, &ltRef, &quoteRef}) {
        delete[] ref->bytes;
    }
}

void XMLPrint::formatBuf(unsigned short const* text, unsigned long count, EscapeFlags escape,
                         UnRepFlags unRep) {
    if (escape == DefaultEscape) {
        escape = escapeFlags;
    }
    if (unRep == DefaultUnRep) {
        unRep = unRepFlags;
    }
    if (unRep == UnRep_CharRef) {
        specialFormat(text, static_cast<unsigned int>(count), escape);
        return;
    }
    if (count < 1) {
        return;
    }
    // Flags outside the table print like NoEscapes: only the line feed is special.
    std::uint64_t const row = gEscapeMasks[escape == AttrEscapes ? 1 : escape == CharEscapes ? 2 : 0];
    bool const charEscapes = escape == CharEscapes;
    auto const option = unRep == UnRep_Replace ? XMLTranscoder::UnRep_RepChar : XMLTranscoder::UnRep_Throw;
    XMLCh const* cursor = AsXMLCh(text);
    XMLCh const* const end = cursor + count;
    // The last two units that passed stay in registers during a scan and are stored after it.
    XMLCh last = lastChar;
    XMLCh previous = previousChar;
    while (cursor < end) {
        XMLCh const* runEnd = cursor;
        for (; runEnd < end; ++runEnd) {
            XMLCh const unit = *runEnd;
            if (IsEscapeChar(row, unit) ||
                (charEscapes && unit == u'>' && last == u']' && previous == u']')) {
                break;
            }
            previous = last;
            last = unit;
        }
        lastChar = last;
        previousChar = previous;
        printRun(cursor, static_cast<unsigned long>(runEnd - cursor), option);
        if (runEnd < end) {
            printSpecial(*runEnd);
            last = 0;
            lastChar = 0;
            ++runEnd;
        }
        cursor = runEnd;
    }
}

void XMLPrint::printRun(XMLCh const* text, unsigned long count, XMLTranscoder::UnRepOpts option) {
    while (count > 0) {
        XMLSize_t const piece = std::min<unsigned long>(count, blockSize);
        XMLSize_t eaten = 0;
        XMLSize_t const bytes = transcoder->transcodeTo(text, piece, buffer, blockSize, eaten, option);
        if (bytes > 0) {
            PrintTarget(buffer, bytes);
        }
        if (eaten == 0) {
            ThrowNoProgress();
        }
        text += eaten;
        count -= eaten;
    }
}

void XMLPrint::printSpecial(unsigned short unit) {
    switch (unit) {
        case u'\n':
            PrintTarget(eolBytes, eolLength);
            break;
        case u'"':
            printQuoteRef();
            break;
        case u'&':
            printAmpRef();
            break;
        case u'\'':
            printAposRef();
            break;
        case u'<':
            printLTRef();
            break;
        case u'>':
            printGTRef();
            break;
        default:
            break;
    }
}

bool XMLPrint::canTranscode(unsigned short unit) {
    if (unit >= sizeof latin1Representable * 8) {
        return transcoder->canTranscodeTo(unit);
    }
    std::uint64_t const bit = std::uint64_t{1} << (unit % 64);
    if ((latin1Known[unit / 64] & bit) == 0) {
        latin1Known[unit / 64] |= bit;
        if (transcoder->canTranscodeTo(unit)) {
            latin1Representable[unit / 64] |= bit;
        }
    }
    return (latin1Representable[unit / 64] & bit) != 0;
}

bool XMLPrint::knownRepresentable(unsigned short unit) const noexcept {
    return unit < sizeof latin1Representable * 8 &&
           ((latin1Representable[unit / 64] >> (unit % 64)) & 1) != 0;
}

void XMLPrint::specialFormat(unsigned short const* text, unsigned int count, EscapeFlags escape) {
    unsigned int done = 0;
    while (done < count) {
        unsigned int runEnd = done;
        // Units already known to be representable are passed without a call.
        while (runEnd < count && (knownRepresentable(text[runEnd]) || canTranscode(text[runEnd]))) {
            ++runEnd;
        }
        formatBuf(text + done, runEnd - done, escape, UnRep_Fail);
        for (; runEnd < count && !canTranscode(text[runEnd]); ++runEnd) {
            // "&#x", at most 8 hexadecimal digits, ";" and the terminator.
            XMLCh reference[3 + 8 + 1 + 1] = {u'&', u'#', u'x'};
            xercesc::XMLString::binToText(static_cast<unsigned int>(text[runEnd]), reference + 3, 8, 16);
            XMLSize_t const digits = xercesc::XMLString::stringLen(reference + 3);
            reference[3 + digits] = u';';
            reference[3 + digits + 1] = 0;
            formatBuf(AsUShort(reference), 3 + digits + 1, NoEscapes, UnRep_Fail);
        }
        done = runEnd;
    }
}

void XMLPrint::printRef(Ref& ref, XMLCh const* text, unsigned int length) {
    if (ref.bytes != nullptr) {
        PrintTarget(ref.bytes, ref.length);
        return;
    }
    XMLSize_t eaten = 0;
    XMLSize_t const bytes =
        transcoder->transcodeTo(text, length, buffer, blockSize, eaten, XMLTranscoder::UnRep_Throw);
    // Without memory for the copy the block serves this once; the next use tries again.
    if (auto* copy = new (std::nothrow) unsigned char[bytes == 0 ? 1 : bytes]) {
        std::memcpy(copy, buffer, bytes);
        ref.bytes = copy;
        ref.length = static_cast<std::uint32_t>(bytes);
    }
    PrintTarget(buffer, bytes);
}

void XMLPrint::printAmpRef() {
    printRef(ampRef, gAmpRef, 5);
}
void XMLPrint::printAposRef() {
    printRef(aposRef, gAposRef, 6);
}
void XMLPrint::printQuoteRef() {
    printRef(quoteRef, gQuoteRef, 6);
}
void XMLPrint::printGTRef() {
    printRef(gtRef, gGTRef, 4);
}
void XMLPrint::printLTRef() {
    printRef(ltRef, gLTRef, 4);
}

XMLPrint& XMLPrint::operator<<(unsigned short const* text) {
    if (text != nullptr && *text != 0) {
        formatBuf(text, Tavo::ucslen(text));
    }
    return *this;
}

XMLPrint& XMLPrint::operator<<(unsigned short unit) {
    formatBuf(&unit, 1);
    return *this;
}

XMLPrint& operator<<(XMLPrint& printer, Tavo::UniString const& text) {
    printer.formatBuf(text.GetUStr(), text.GetLength());
    return printer;
}

XMLPrintTarget::XMLPrintTarget(XMLTranscoder& transcoder, bool crlf, EscapeFlags escapeFlags,
                               UnRepFlags unRepFlags, Tavo::OChannel* channel)
    : XMLPrint(transcoder, crlf, escapeFlags, unRepFlags), channel(channel) {}

void XMLPrintTarget::PrintTarget(unsigned char const* bytes, unsigned long count) {
    // Pieces are at most one block (16384 bytes) or a reference, so the count fits WriteBin's.
    if (ok && channel->WriteBin(reinterpret_cast<char const*>(bytes), static_cast<unsigned int>(count),
                                nullptr) != 0) {
        ok = false;
    }
}

} // namespace TavoXML::detail
