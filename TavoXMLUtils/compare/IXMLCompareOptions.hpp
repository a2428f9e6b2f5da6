// TavoXML::IXMLCompareOptions: the policy of a comparison. The walk asks an options object which
// attributes count, whether two element names are equal, which value comparator judges a pair of
// values, what becomes of nodes that are neither element nor text, and which node comparator walks the
// children of an element pair.
//
// Every operation is virtual, so that callers can derive their own options from this interface or from
// one of the ready classes. Objects are reference counted (Tavo::SharedObject, count 0 when new) and
// held by Tavo::SharedPtr during a walk. A comparison never changes the caller's object: it works on a
// Clone. When PrepareNodeComparator changes the object, CanOptionsChangeAndEffectNotChildNodes must say
// so; the walk then gives every element pair a clone of its parent's options, so that a change reaches
// the pair's subtree and nothing else.
//
// Failures: CompareSpecialTypeNodes throws a difference report by design; every operation that returns
// a new object lets an allocation failure pass. Nothing else here reports errors.
#pragma once

#include "TavoRoot/SharedPtr.hpp"
#include "TavoXMLUtils/TavoXMLUtilsExport.hpp"

#include <xercesc/util/XercesDefs.hpp>

XERCES_CPP_NAMESPACE_BEGIN
class DOMAttr;
class DOMElement;
class DOMNode;
XERCES_CPP_NAMESPACE_END

namespace TavoXML {

class XMLNodeComparator;
class XMLValueComparator;

class TAVOXMLUTILS_API IXMLCompareOptions : public Tavo::SharedObject {
public:
    ~IXMLCompareOptions() override;

    // A full copy of the current state, new, owned by the caller.
    virtual IXMLCompareOptions* Clone() const = 0;
    // Tolerance of the comparison of reals.
    virtual double GetDoubleEps() const = 0;
    // Whether the attribute takes part in the comparison.
    virtual bool AcceptAttribute(xercesc::DOMAttr const* attribute) const = 0;
    // Whether two elements count as having the same name.
    virtual bool AreNodeNamesEqual(xercesc::DOMNode const* left, xercesc::DOMNode const* right) const = 0;
    // Judges two nodes of one type that is neither element nor text; throws on a difference.
    virtual void CompareSpecialTypeNodes(xercesc::DOMNode const* left, xercesc::DOMNode const* right) = 0;
    // A new comparator for the values of this attribute, owned by the caller.
    virtual XMLValueComparator* GetAttributeValueComparator(xercesc::DOMAttr const* attribute) const = 0;
    // A new comparator for text values, owned by the caller.
    virtual XMLValueComparator* GetValueComparator() const = 0;
    // Called when an element pair is entered; may change this object. Gives the new node comparator
    // that walks the pair's children, owned by the caller.
    virtual XMLNodeComparator* PrepareNodeComparator(xercesc::DOMElement const* left,
                                                     xercesc::DOMElement const* right) = 0;
    // True if PrepareNodeComparator changes this object, so that each element pair needs its own clone.
    virtual bool CanOptionsChangeAndEffectNotChildNodes() const = 0;
};

} // namespace TavoXML
