// XMLDeserializer: the Tavo::ObjectState::Content that Build pulls a state from. It walks the children
// of its node with EnumerateXML in the dialect of its provider; the walk's status is dropped, since
// Build judges the event stream itself. Exceptions of the walk pass through. Node and provider are not
// owned and must outlive the deserializer.
#pragma once

#include "TavoRoot/ObjectState.hpp"
#include "TavoXMLUtils/objectstate/TypeInfoProvider.hpp"

#include <xercesc/util/XercesDefs.hpp>

XERCES_CPP_NAMESPACE_BEGIN
class DOMNode;
XERCES_CPP_NAMESPACE_END

namespace TavoXML::detail {

class XMLDeserializer final : public Tavo::ObjectState::Content {
public:
    XMLDeserializer(xercesc::DOMNode const* node, TypeInfoProvider const* provider) noexcept;
    void Enumerate(Tavo::ObjectState::ContentProcessor& contentProcessor) const override;

private:
    xercesc::DOMNode const* node;
    TypeInfoProvider const* provider;
};

} // namespace TavoXML::detail
