#include "TavoXMLUtils/domutils/WriterText.hpp"

#include "TavoXMLUtils/domutils/internal/MemoryError.hpp"

#include <utility>

namespace TavoXMLUtils {

namespace {

// Built once: the replacements run for every string that a writer puts into a CDATA section.
struct CDATAPatterns {
    Tavo::UniString const crLf{u"\r\n"};
    Tavo::UniString const lineFeed{u"\n"};
    Tavo::UniString const sectionEnd{u"]]>"};
    Tavo::UniString const protectedEnd{u"]] >"};
};

CDATAPatterns const& Patterns() {
    static CDATAPatterns const patterns;
    return patterns;
}

} // namespace

void CorrectCDATA(Tavo::UniString& text) {
    if (text.IsEmpty()) {
        return;
    }
    CDATAPatterns const& patterns = Patterns();
    text.ReplaceAll(patterns.crLf, patterns.lineFeed);
    text.ReplaceAll(Tavo::UniChar('\r'), Tavo::UniChar('\n'));
    text.ReplaceAll(patterns.sectionEnd, patterns.protectedEnd);
    if (text.IsEmpty()) {
        TavoXML::detail::ThrowMemoryError();
    }
}

void MakeItKetraString(Tavo::UniString& text) {
    bool hasDouble = false;
    bool hasSingle = false;
    bool hasBack = false;
    for (char16_t const c : text.View()) {
        hasDouble = hasDouble || c == u'"';
        hasSingle = hasSingle || c == u'\'';
        hasBack = hasBack || c == u'`';
    }
    char quote = '"';
    if (hasDouble && !hasSingle) {
        quote = '\'';
    } else if (hasDouble && !hasBack) {
        quote = '`';
    }
    // One new buffer instead of an insertion at the front.
    Tavo::UniString quoted;
    quoted.Reserve(text.GetLength() + 2);
    quoted.Append(Tavo::UniChar(quote));
    quoted.Append(text);
    quoted.Append(Tavo::UniChar(quote));
    text = std::move(quoted);
}

} // namespace TavoXMLUtils
