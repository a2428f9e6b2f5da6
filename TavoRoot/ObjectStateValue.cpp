// Tavo::ObjectState::Value and Tavo::ObjectState::List: the values of a state and its lists.
#include "TavoRoot/ObjectState.hpp"

#include <cmath>
#include <type_traits>
#include <utility>

namespace Tavo {

namespace {

template <class T>
inline constexpr bool gIsBox = false;
template <class T>
inline constexpr bool gIsBox<std::unique_ptr<T>> = true;

} // namespace

ObjectState::Value::Value(bool value) noexcept : data(std::in_place_type<bool>, value) {}
ObjectState::Value::Value(long long value) noexcept : data(std::in_place_type<long long>, value) {}
ObjectState::Value::Value(unsigned long long value) noexcept
    : data(std::in_place_type<unsigned long long>, value) {}
ObjectState::Value::Value(double value) noexcept : data(std::in_place_type<double>, value) {}
ObjectState::Value::Value(UniString value) noexcept : data(std::in_place_type<UniString>, std::move(value)) {}
ObjectState::Value::Value(ObjectState value) : data(std::make_unique<ObjectState>(std::move(value))) {}
ObjectState::Value::Value(List value) : data(std::make_unique<List>(std::move(value))) {}

// A deep copy: boxed containers are copied, not shared. A moved-from box (null) stays null.
ObjectState::Value::Value(Value const& other)
    : data(std::visit(
          [](auto const& value) -> Data {
              using T = std::decay_t<decltype(value)>;
              if constexpr (gIsBox<T>) {
                  return T(value ? std::make_unique<typename T::element_type>(*value) : nullptr);
              } else {
                  return Data(std::in_place_type<T>, value);
              }
          },
          other.data)) {}

ObjectState::Value::Value(Value&& other) noexcept = default;

ObjectState::Value& ObjectState::Value::operator=(Value const& other) {
    if (this != &other) {
        *this = Value(other);
    }
    return *this;
}

ObjectState::Value& ObjectState::Value::operator=(Value&& other) noexcept = default;
ObjectState::Value::~Value() = default;

ObjectState::Value::Kind ObjectState::Value::GetKind() const noexcept {
    return static_cast<Kind>(data.index());
}

bool ObjectState::Value::GetBool() const {
    return std::get<bool>(data);
}

long long ObjectState::Value::GetInt() const {
    return std::get<long long>(data);
}

unsigned long long ObjectState::Value::GetUInt() const {
    return std::get<unsigned long long>(data);
}

double ObjectState::Value::GetReal() const {
    return std::get<double>(data);
}

UniString const& ObjectState::Value::GetString() const {
    return std::get<UniString>(data);
}

ObjectState const& ObjectState::Value::GetObject() const {
    return *std::get<std::unique_ptr<ObjectState>>(data);
}

ObjectState& ObjectState::Value::GetObject() {
    return *std::get<std::unique_ptr<ObjectState>>(data);
}

ObjectState::List const& ObjectState::Value::GetList() const {
    return *std::get<std::unique_ptr<List>>(data);
}

ObjectState::List& ObjectState::Value::GetList() {
    return *std::get<std::unique_ptr<List>>(data);
}

bool ObjectState::Value::operator==(Value const& other) const {
    if (data.index() != other.data.index()) {
        return false;
    }
    return std::visit(
        [&](auto const& value) {
            using T = std::decay_t<decltype(value)>;
            T const& otherValue = std::get<T>(other.data);
            if constexpr (gIsBox<T>) {
                return value && otherValue ? *value == *otherValue : value == otherValue;
            } else if constexpr (std::is_same_v<T, double>) {
                return value == otherValue || (std::isnan(value) && std::isnan(otherValue));
            } else {
                return value == otherValue;
            }
        },
        data);
}

ObjectState::List::List() noexcept = default;
ObjectState::List::List(List const& other) = default;
ObjectState::List::List(List&& other) noexcept = default;
ObjectState::List& ObjectState::List::operator=(List const& other) = default;
ObjectState::List& ObjectState::List::operator=(List&& other) noexcept = default;
ObjectState::List::~List() = default;

ObjectState::List& ObjectState::List::PushBool(bool value) {
    Push(Value(value));
    return *this;
}

ObjectState::List& ObjectState::List::PushInt(long long value) {
    Push(Value(value));
    return *this;
}

ObjectState::List& ObjectState::List::PushUInt(unsigned long long value) {
    Push(Value(value));
    return *this;
}

ObjectState::List& ObjectState::List::PushReal(double value) {
    Push(Value(value));
    return *this;
}

ObjectState::List& ObjectState::List::PushString(UniString value) {
    Push(Value(std::move(value)));
    return *this;
}

ObjectState& ObjectState::List::PushObject() {
    return Push(Value(ObjectState())).GetObject();
}

ObjectState::List& ObjectState::List::PushList() {
    return Push(Value(List())).GetList();
}

ObjectState::Value& ObjectState::List::Push(Value value) {
    values.push_back(std::move(value));
    return values.back();
}

std::size_t ObjectState::List::GetSize() const noexcept {
    return values.size();
}

bool ObjectState::List::IsEmpty() const noexcept {
    return values.empty();
}

ObjectState::Value const& ObjectState::List::operator[](std::size_t index) const noexcept {
    return values[index];
}

ObjectState::Value& ObjectState::List::operator[](std::size_t index) noexcept {
    return values[index];
}

ObjectState::List::const_iterator ObjectState::List::begin() const noexcept {
    return values.begin();
}

ObjectState::List::const_iterator ObjectState::List::end() const noexcept {
    return values.end();
}

void ObjectState::List::Clear() noexcept {
    values.clear();
}

bool ObjectState::List::operator==(List const& other) const {
    return values == other.values;
}

} // namespace Tavo
