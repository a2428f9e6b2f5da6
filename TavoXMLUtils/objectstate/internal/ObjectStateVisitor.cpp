// ObjectStateVisitor: forwards each enumeration event to the state's builder.
#include "TavoXMLUtils/objectstate/internal/ObjectStateVisitor.hpp"

#include "TavoRoot/String.hpp"

namespace TavoXML::detail {

ObjectStateVisitor::ObjectStateVisitor(TypeInfoProvider const* provider,
                                       Tavo::ObjectState::ContentProcessor& processor) noexcept
    : XMLContentProcessor(provider), processor(processor) {}

// Field names are expected to be ASCII; nothing enforces it, and other characters take the default code.
void ObjectStateVisitor::NameFound(Tavo::UniString const& name) {
    processor.FieldFound(Tavo::String(name.ToCStr(0, Tavo::UniString::kAll, TavoCharCodeDefault).Get()));
}

void ObjectStateVisitor::BoolFound(bool value) {
    processor.BoolFound(value);
}

void ObjectStateVisitor::IntFound(long long value) {
    processor.IntFound(value);
}

void ObjectStateVisitor::UIntFound(unsigned long long value) {
    processor.UIntFound(value);
}

void ObjectStateVisitor::RealFound(double value) {
    processor.RealFound(value);
}

void ObjectStateVisitor::StringFound(Tavo::UniString const& value) {
    processor.StringFound(value);
}

void ObjectStateVisitor::ObjectEntered() {
    processor.ObjectEntered();
}

void ObjectStateVisitor::ObjectExited() {
    processor.ObjectExited();
}

void ObjectStateVisitor::ListEntered() {
    processor.ListEntered();
}

void ObjectStateVisitor::ListExited() {
    processor.ListExited();
}

} // namespace TavoXML::detail
