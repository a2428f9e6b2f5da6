// The defaults of TavoXML::TypeInfoProvider.
#include "TavoXMLUtils/objectstate/TypeInfoProvider.hpp"

namespace TavoXML {

TypeInfoProvider::~TypeInfoProvider() = default;

bool TypeInfoProvider::AreListsHomogeneous() const {
    return false;
}

int TypeInfoProvider::GetTagContent() const {
    return 0;
}

char const* TypeInfoProvider::GetListValueTag() const {
    return nullptr;
}

char const* TypeInfoProvider::GetListSubtypeAttribute() const {
    return nullptr;
}

} // namespace TavoXML
