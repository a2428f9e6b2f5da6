#include "TavoXMLUtils/output/TavoSAX2Writer.hpp"

#include "TavoRoot/UniString.hpp"

#include <xercesc/framework/XMLAttr.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLUni.hpp>

#include <memory>

XERCES_CPP_NAMESPACE_USE

namespace TavoXML {

namespace {

// What the index lookups answer: nothing found.
constexpr XMLSize_t gNoIndex = ~XMLSize_t(0);
constexpr int gNotFound = -1;

} // namespace

TavoSAX2Writer::Attrs::List::List() {
    Reallocate(4);
}

TavoSAX2Writer::Attrs::Attrs() = default;

// XMLAttr's destructor runs its cleanUp; the memory goes back through XMemory.
TavoSAX2Writer::Attrs::~Attrs() {
    for (XMLAttr* attr : attrs) {
        delete attr;
    }
}

// The prefix is the zero-length string: XMLUni::fgEmptyString is the keyword "EMPTY" in this Xerces-C++,
// and as a prefix it would turn up in the attribute's qualified name.
void TavoSAX2Writer::Attrs::Add(Tavo::UniString const& name, Tavo::UniString const& value) {
    auto attr =
        std::make_unique<XMLAttr>(0u, name.GetU16Str(), XMLUni::fgZeroLenString, value.GetU16Str(),
                                  XMLAttDef::CData, true, XMLPlatformUtils::fgMemoryManager, nullptr, false);
    attrs.Push(attr.get());
    attr.release();
}

XMLAttr const* TavoSAX2Writer::Attrs::At(XMLSize_t const index) const noexcept {
    return index < attrs.GetSize() ? attrs[static_cast<unsigned int>(index)] : nullptr;
}

XMLSize_t TavoSAX2Writer::Attrs::getLength() const {
    return attrs.GetSize();
}

XMLCh const* TavoSAX2Writer::Attrs::getURI(XMLSize_t const) const {
    return XMLUni::fgZeroLenString;
}

XMLCh const* TavoSAX2Writer::Attrs::getLocalName(XMLSize_t const index) const {
    XMLAttr const* const attr = At(index);
    return attr != nullptr ? attr->getName() : nullptr;
}

XMLCh const* TavoSAX2Writer::Attrs::getQName(XMLSize_t const index) const {
    return getLocalName(index);
}

XMLCh const* TavoSAX2Writer::Attrs::getType(XMLSize_t const index) const {
    XMLAttr const* const attr = At(index);
    return attr != nullptr ? XMLAttDef::getAttTypeString(attr->getType()) : nullptr;
}

XMLCh const* TavoSAX2Writer::Attrs::getValue(XMLSize_t const index) const {
    XMLAttr const* const attr = At(index);
    return attr != nullptr ? attr->getValue() : nullptr;
}

bool TavoSAX2Writer::Attrs::getIndex(XMLCh const* const, XMLCh const* const, XMLSize_t& index) const {
    index = gNoIndex;
    return false;
}

int TavoSAX2Writer::Attrs::getIndex(XMLCh const* const, XMLCh const* const) const {
    return gNotFound;
}

bool TavoSAX2Writer::Attrs::getIndex(XMLCh const* const, XMLSize_t& index) const {
    index = gNoIndex;
    return false;
}

int TavoSAX2Writer::Attrs::getIndex(XMLCh const* const) const {
    return gNotFound;
}

XMLCh const* TavoSAX2Writer::Attrs::getType(XMLCh const* const, XMLCh const* const) const {
    return nullptr;
}

XMLCh const* TavoSAX2Writer::Attrs::getType(XMLCh const* const) const {
    return nullptr;
}

XMLCh const* TavoSAX2Writer::Attrs::getValue(XMLCh const* const, XMLCh const* const) const {
    return nullptr;
}

XMLCh const* TavoSAX2Writer::Attrs::getValue(XMLCh const* const) const {
    return nullptr;
}

} // namespace TavoXML
