// The names of the attributes that the first pass of an attribute comparison matched, for the second
// pass. Usually every attribute of the right element was matched, which the count alone shows; only
// otherwise is the Tavo::HashSet of the names built, from the left attributes marked in the first pass
// (elements with more than 64 attributes fill the set as they go). The answers are those of a set
// filled in the first pass. Library-internal.
#pragma once

#include "TavoRoot/HashSet.hpp"
#include "TavoRoot/UniString.hpp"

#include <xercesc/dom/DOMNamedNodeMap.hpp>
#include <xercesc/dom/DOMNode.hpp>

#include <cstdint>

namespace TavoXML::detail {

class MatchedAttributeNames {
public:
    explicit MatchedAttributeNames(xercesc::DOMNamedNodeMap const* left) noexcept : left(left) {}

    // The left attribute at `index` was matched.
    void Add(XMLSize_t index) {
        ++count;
        if (index < kMarks) {
            marks |= std::uint64_t{1} << index;
        } else {
            names.Add(Tavo::UniString(left->item(index)->getNodeName()));
        }
    }
    // Every one of `total` right attributes has a matched partner: names are unique in an element.
    bool CoverAll(XMLSize_t total) const noexcept { return count == total; }
    bool Contains(XMLCh const* name) {
        if (!built) {
            for (XMLSize_t i = 0; i < kMarks; ++i) {
                if ((marks >> i) & 1u) {
                    names.Add(Tavo::UniString(left->item(i)->getNodeName()));
                }
            }
            built = true;
        }
        return names.Contains(Tavo::UniString(name));
    }

private:
    static constexpr XMLSize_t kMarks = 64;

    xercesc::DOMNamedNodeMap const* left;
    Tavo::HashSet<Tavo::UniString> names;
    std::uint64_t marks = 0;
    XMLSize_t count = 0;
    bool built = false;
};

} // namespace TavoXML::detail
