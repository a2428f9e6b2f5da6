// TavoXML::AttrRuledCompareOptions: ready options that let the documents steer the comparison through
// two attributes, besides everything StrictOrderAutoValueCompareOptions does.
//
// - "tavo_type" (SetTypeDeciderAtt) on an element says how the texts directly below it are compared:
//   "int" (XMLCompareInt), "double" (XMLCompareDouble), "string" (XMLCompareString), without regard to
//   case; any other word means the automatic comparison. A word holds for that element pair only. When
//   both elements carry one and they differ, the automatic comparison applies; when one does, its word.
// - "tavo_eps" (SetEpsAtt) on an element sets the tolerance from that element down, for its
//   attributes, texts and whole subtree, until a descendant sets another; the next sibling starts again
//   from the parent's. When both elements carry one, they must agree within 1e-12; a value that is no
//   real, or two that disagree, leave the tolerance as it was.
// - An empty attribute name switches that feature off.
//
// Both attributes are also ordinary attributes and are compared like all others; an attribute on one
// side only is therefore reported as missing.
//
// State: the tolerance, the two attribute names and the type word in force. PrepareNodeComparator
// changes the object, so the walk gives every element pair a clone of its parent's options (the
// caller's object keeps its state). Failures: none of its own; a value the rules cannot read is no
// failure.
#pragma once

#include "TavoRoot/UniString.hpp"
#include "TavoXMLUtils/TavoXMLUtilsExport.hpp"
#include "TavoXMLUtils/compare/StrictOrderAutoValueCompareOptions.hpp"

namespace TavoXML {

class TAVOXMLUTILS_API AttrRuledCompareOptions : public StrictOrderAutoValueCompareOptions {
public:
    // A copy is a new object, with no references yet.
    AttrRuledCompareOptions(AttrRuledCompareOptions const& other) = default;
    AttrRuledCompareOptions();
    ~AttrRuledCompareOptions() override;

    // A new object with the same tolerance, attribute names and type word.
    IXMLCompareOptions* Clone() const override;
    XMLValueComparator* GetValueComparator() const override;
    // Starts the pair without a type word, reads the two attributes, gives a new XMLCompareStrictOrder.
    XMLNodeComparator* PrepareNodeComparator(xercesc::DOMElement const* left,
                                             xercesc::DOMElement const* right) override;
    bool CanOptionsChangeAndEffectNotChildNodes() const override;

    virtual void SetTypeDeciderAtt(Tavo::UniString const& name);
    virtual Tavo::UniString GetTypeDeciderAtt() const;
    virtual void SetEpsAtt(Tavo::UniString const& name);
    virtual Tavo::UniString GetEpsAtt() const;
    // The element's type attribute; null without one, for a null element, or with the feature off.
    virtual xercesc::DOMAttr const* GetTypeAttribute(xercesc::DOMElement const* element) const;
    // Sets the type word from the two elements' type attributes, then the tolerance.
    virtual void SetCurrentValueType(xercesc::DOMElement const* left, xercesc::DOMElement const* right);
    // Sets the tolerance from the two elements' tolerance attributes (for every type word and for none).
    virtual void DoValueTypeSpecificUpdates(xercesc::DOMElement const* left,
                                            xercesc::DOMElement const* right);

protected:
    // The type word in force for the current element pair; empty for none.
    Tavo::UniString GetCurrentValueType() const { return currentValueType; }

private:
    Tavo::UniString epsAtt;
    Tavo::UniString typeDeciderAtt;
    Tavo::UniString currentValueType;
};

} // namespace TavoXML
