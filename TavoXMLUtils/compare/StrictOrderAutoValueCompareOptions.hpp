// TavoXML::StrictOrderAutoValueCompareOptions: the plain ready policy of a comparison. Children in
// document order (XMLCompareStrictOrder), every attribute taken, element names equal without regard to
// case, texts and attribute values judged by XMLCompareAuto (reals when both sides read as reals, with
// one tolerance for the whole tree, 1e-05 unless set; otherwise trimmed text without regard to case).
// Nodes that are neither element nor text are not supported: CompareSpecialTypeNodes throws
// NotSupportedNodeTypesException for them, also when they are identical (filter them out with
// SkipWhitespaceTextsCompareFilter).
//
// State: the tolerance only. The walk never changes the object, so one object serves every level
// (CanOptionsChangeAndEffectNotChildNodes is false). Every operation is virtual for derived options.
//
// Failures: CompareSpecialTypeNodes by design; otherwise only allocation failures pass.
#pragma once

#include "TavoXMLUtils/TavoXMLUtilsExport.hpp"
#include "TavoXMLUtils/compare/IXMLCompareOptions.hpp"

namespace TavoXML {

class TAVOXMLUTILS_API StrictOrderAutoValueCompareOptions : public IXMLCompareOptions {
public:
    static constexpr double kDefaultDoubleEps = 1e-05;

    // A copy is a new object, with no references yet.
    StrictOrderAutoValueCompareOptions(StrictOrderAutoValueCompareOptions const& other) = default;
    StrictOrderAutoValueCompareOptions() = default;
    ~StrictOrderAutoValueCompareOptions() override;

    // A new object with the same tolerance.
    IXMLCompareOptions* Clone() const override;
    double GetDoubleEps() const override;
    bool AcceptAttribute(xercesc::DOMAttr const* attribute) const override;
    bool AreNodeNamesEqual(xercesc::DOMNode const* left, xercesc::DOMNode const* right) const override;
    void CompareSpecialTypeNodes(xercesc::DOMNode const* left, xercesc::DOMNode const* right) override;
    XMLValueComparator* GetAttributeValueComparator(xercesc::DOMAttr const* attribute) const override;
    XMLValueComparator* GetValueComparator() const override;
    XMLNodeComparator* PrepareNodeComparator(xercesc::DOMElement const* left,
                                             xercesc::DOMElement const* right) override;
    bool CanOptionsChangeAndEffectNotChildNodes() const override;

    // Reals closer than this are equal; 0 asks for exact equality, a negative value makes all differ.
    virtual void SetDoubleEps(double eps);

private:
    double doubleEps = kDefaultDoubleEps;
};

} // namespace TavoXML
