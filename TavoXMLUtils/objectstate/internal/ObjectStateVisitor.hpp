// ObjectStateVisitor: the adapter from the events of EnumerateXML to the ContentProcessor with which
// Tavo::ObjectState::Build fills a state. Every event is forwarded as it is; a name is converted to the
// default 8-bit code (characters it lacks become '?'). The processor is not owned and must outlive the
// visitor.
#pragma once

#include "TavoRoot/ObjectState.hpp"
#include "TavoXMLUtils/objectstate/XMLContentProcessor.hpp"

namespace TavoXML::detail {

class ObjectStateVisitor final : public XMLContentProcessor {
public:
    ObjectStateVisitor(TypeInfoProvider const* provider,
                       Tavo::ObjectState::ContentProcessor& processor) noexcept;

    void NameFound(Tavo::UniString const& name) override;
    void BoolFound(bool value) override;
    void IntFound(long long value) override;
    void UIntFound(unsigned long long value) override;
    void RealFound(double value) override;
    void StringFound(Tavo::UniString const& value) override;
    void ObjectEntered() override;
    void ObjectExited() override;
    void ListEntered() override;
    void ListExited() override;

private:
    Tavo::ObjectState::ContentProcessor& processor;
};

} // namespace TavoXML::detail
