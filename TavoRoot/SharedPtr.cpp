#include "TavoRoot/SharedPtr.hpp"

namespace Tavo {

// Out of line so that the class has one home for its virtual table.
SharedObject::~SharedObject() = default;

} // namespace Tavo
