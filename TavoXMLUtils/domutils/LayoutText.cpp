#include "TavoXMLUtils/domutils/LayoutText.hpp"

#include "TavoXMLUtils/domutils/internal/MemoryError.hpp"

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMException.hpp>
#include <xercesc/dom/DOMText.hpp>

#include <algorithm>
#include <memory>
#include <new>

using xercesc::DOMElement;
using xercesc::DOMText;

namespace TavoXMLUtils {

namespace {

// A run of tab characters, zero-terminated: on the stack for the levels that documents have, in a
// fresh array beyond. A level of zero or less is the empty text.
class TabRun {
public:
    explicit TabRun(int tabs) {
        std::size_t const count = tabs > 0 ? static_cast<std::size_t>(tabs) : 0;
        if (count >= kShortCapacity) {
            longText.reset(new (std::nothrow) char16_t[count + 1]);
            if (longText == nullptr) {
                TavoXML::detail::ThrowMemoryError();
            }
            text = longText.get();
        }
        std::fill_n(text, count, u'\t');
        text[count] = 0;
    }
    TabRun(TabRun const&) = delete;
    TabRun& operator=(TabRun const&) = delete;

    char16_t const* Get() const noexcept { return text; }

private:
    static constexpr std::size_t kShortCapacity = 64;
    char16_t shortText[kShortCapacity];
    std::unique_ptr<char16_t[]> longText;
    char16_t* text = shortText;
};

char16_t const gLineEnd[] = u"\n";

// The text node of the throwing pair; the memory error when there is none.
void AppendText(DOMElement* parent, char16_t const* text) {
    if (parent == nullptr) {
        TavoXML::detail::ThrowMemoryError();
    }
    DOMText* node = parent->getOwnerDocument()->createTextNode(text);
    if (node == nullptr) {
        TavoXML::detail::ThrowMemoryError();
    }
    parent->appendChild(node);
}

// The same for the false-returning pair.
bool TryAppendText(DOMElement* parent, char16_t const* text) {
    if (parent == nullptr) {
        return false;
    }
    try {
        DOMText* node = parent->getOwnerDocument()->createTextNode(text);
        if (node == nullptr) {
            return false;
        }
        parent->appendChild(node);
        return true;
    } catch (xercesc::DOMException const&) {
        return false;
    }
}

} // namespace

void Tabs(DOMElement* parent, int tabs) {
    TabRun const run(tabs);
    AppendText(parent, run.Get());
}

void NewLine(DOMElement* parent) {
    AppendText(parent, gLineEnd);
}

bool WriteTabs(DOMElement* parent, int tabs) {
    try {
        TabRun const run(tabs);
        return TryAppendText(parent, run.Get());
    } catch (xercesc::DOMException const&) {
        return false; // no memory for a long run
    }
}

bool WriteNewLine(DOMElement* parent) {
    return TryAppendText(parent, gLineEnd);
}

} // namespace TavoXMLUtils
