// TavoXML::ConvertToObjectState: fills a Tavo::ObjectState from XML written by CreateFromObjectState (or
// any XML of its vocabulary), in the plain dialect (no provider) or the typed dialect of a
// TavoXML::TypeInfoProvider. The children of the node, or of the document element, become the fields;
// the element's own name doesn't matter. EnumerateXML.hpp tells how text becomes values and what is lost.
//
// The result is the status of Tavo::ObjectState::Build: NoError, or GeneralError when the events did not
// make a whole state; the state is then emptied. In the plain dialect a field whose value failed is left
// without one, which fails the build; a failure inside a list only drops the rest of that list. In the
// typed dialect the exceptions of the walk pass to the caller through Build, which empties the state. The
// string and channel forms return GeneralError without touching the state when no document comes of
// their input; a reader they make is deleted on every way out.
#pragma once

#include "TavoRoot/ObjectState.hpp"
#include "TavoRoot/UniString.hpp"
#include "TavoRoot/XMLIChannel.hpp"
#include "TavoXMLUtils/TavoXMLUtilsExport.hpp"
#include "TavoXMLUtils/objectstate/TypeInfoProvider.hpp"

#include <xercesc/util/XercesDefs.hpp>

XERCES_CPP_NAMESPACE_BEGIN
class DOMNode;
XERCES_CPP_NAMESPACE_END

namespace TavoXML {

// The children of `node`. A null node gives GeneralError and leaves the state untouched.
TAVOXMLUTILS_API int ConvertToObjectState(XERCES_CPP_NAMESPACE::DOMNode const* node, Tavo::ObjectState& state,
                                          TypeInfoProvider const* provider);
// A whole document in memory, whatever its root's name.
TAVOXMLUTILS_API int ConvertToObjectState(Tavo::UniString const& text, Tavo::ObjectState& state,
                                          TypeInfoProvider const* provider);
// The file behind the channel, read afresh from its document element whatever the channel's position;
// a channel without a file location gives GeneralError.
TAVOXMLUTILS_API int ConvertToObjectState(Tavo::XMLIChannel& channel, Tavo::ObjectState& state,
                                          TypeInfoProvider const* provider);

} // namespace TavoXML
