// XMLContentProcessor: the empty events of the enumeration receiver.
#include "TavoXMLUtils/objectstate/XMLContentProcessor.hpp"

XMLContentProcessor::XMLContentProcessor(TavoXML::TypeInfoProvider const* provider) noexcept
    : provider(provider) {}

XMLContentProcessor::~XMLContentProcessor() = default;

TavoXML::TypeInfoProvider const* XMLContentProcessor::GetAttributeProvider() const noexcept {
    return provider;
}

void XMLContentProcessor::NameFound(Tavo::UniString const&) {}
void XMLContentProcessor::BoolFound(bool) {}
void XMLContentProcessor::IntFound(long long) {}
void XMLContentProcessor::UIntFound(unsigned long long) {}
void XMLContentProcessor::RealFound(double) {}
void XMLContentProcessor::StringFound(Tavo::UniString const&) {}
void XMLContentProcessor::ObjectEntered() {}
void XMLContentProcessor::ObjectExited() {}
void XMLContentProcessor::ListEntered() {}
void XMLContentProcessor::ListExited() {}
