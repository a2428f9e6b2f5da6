// TavoXML::CreateFromObjectState: writes a Tavo::ObjectState as XML, in the plain dialect (no provider)
// or in the typed dialect of a TavoXML::TypeInfoProvider.
//
// Vocabulary, with F a field name, V the value's text and the provider's words in capitals:
//
//   what                 plain                  typed, GetTagContent() 0     typed, otherwise
//   scalar field         <F>V</F>               <F TYPEATTR="type">V</F>      <type TYPEATTR="F">V</type>
//   object / list field  <F>fields</F>          <F TYPEATTR="OBJECT|LIST">    <OBJECT|LIST TYPEATTR="F">
//   scalar in a list     <list_value>V</...>    <LISTVALUETAG> (+ TYPEATTR   <type>V</type>
//                                               unless homogeneous)
//   object in a list     <list_value>...        as an object field, named "list_value"
//   homogeneous list     -                      LISTSUBTYPE="type of the first scalar" on the list
//
// Values: "true"/"false", integers in decimal, reals as the shortest text that reads back, strings as
// they are. An empty object or list holds an empty text node. In the typed dialect the value text stands
// between the channel's whitespace.
//
// Both forms return NoError (0) whatever the channel reports. Exceptions of the channel, of the builder
// or of the state's enumeration pass to the caller; the string form then leaves `text` untouched. Beyond
// 1000 levels of nested objects and lists, and for a provider that returns a null word where one is
// needed, the conversion throws TavoXML::XMLObjectStateException.
#pragma once

#include "TavoRoot/ObjectState.hpp"
#include "TavoRoot/UniString.hpp"
#include "TavoRoot/XMLOChannel.hpp"
#include "TavoXMLUtils/TavoXMLUtilsExport.hpp"
#include "TavoXMLUtils/objectstate/TypeInfoProvider.hpp"

namespace TavoXML {

// The whole document, with XML declaration, under a top-level element "root", into `text`.
TAVOXMLUTILS_API int CreateFromObjectState(Tavo::ObjectState const& state, Tavo::UniString& text,
                                           TypeInfoProvider const* provider);
// The fields at the channel's current place, between WriteStartDocument and WriteEndDocument; the
// channel stays open for more output.
TAVOXMLUTILS_API int CreateFromObjectState(Tavo::ObjectState const& state, Tavo::XMLOChannel& channel,
                                           TypeInfoProvider const* provider);

} // namespace TavoXML
