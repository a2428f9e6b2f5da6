// Tavo::ObjectState: its fields, their lookup and comparison, and the enumeration to a Processor.
#include "TavoRoot/ObjectState.hpp"

#include <algorithm>
#include <utility>

namespace Tavo {

namespace {

// Reports one value under `name` by the operation of its kind.
void ReportValue(ObjectState::Processor& processor, String const& name, ObjectState::Value const& value) {
    using Kind = ObjectState::Value::Kind;
    switch (value.GetKind()) {
        case Kind::Bool:
            processor.BoolFound(name, value.GetBool());
            break;
        case Kind::Int:
            processor.IntFound(name, value.GetInt());
            break;
        case Kind::UInt:
            processor.UIntFound(name, value.GetUInt());
            break;
        case Kind::Real:
            processor.RealFound(name, value.GetReal());
            break;
        case Kind::String:
            processor.StringFound(name, value.GetString());
            break;
        case Kind::Object:
            processor.ObjectFound(name, value.GetObject());
            break;
        case Kind::List:
            processor.ListFound(name, value.GetList());
            break;
    }
}

} // namespace

ObjectState::ObjectState() noexcept = default;
ObjectState::ObjectState(ObjectState const& other) = default;
ObjectState::ObjectState(ObjectState&& other) noexcept = default;
ObjectState& ObjectState::operator=(ObjectState const& other) = default;
ObjectState& ObjectState::operator=(ObjectState&& other) noexcept = default;
ObjectState::~ObjectState() = default;

ObjectState& ObjectState::AddBool(String const& name, bool value) {
    Add(name, Value(value));
    return *this;
}

ObjectState& ObjectState::AddInt(String const& name, long long value) {
    Add(name, Value(value));
    return *this;
}

ObjectState& ObjectState::AddUInt(String const& name, unsigned long long value) {
    Add(name, Value(value));
    return *this;
}

ObjectState& ObjectState::AddReal(String const& name, double value) {
    Add(name, Value(value));
    return *this;
}

ObjectState& ObjectState::AddString(String const& name, UniString value) {
    Add(name, Value(std::move(value)));
    return *this;
}

ObjectState& ObjectState::AddObject(String const& name) {
    return Add(name, Value(ObjectState())).GetObject();
}

ObjectState::List& ObjectState::AddList(String const& name) {
    return Add(name, Value(List())).GetList();
}

ObjectState::Value& ObjectState::Add(String const& name, Value value) {
    fields.push_back(Field{name, std::move(value)});
    return fields.back().value;
}

ObjectState::Value const* ObjectState::Find(String const& name) const noexcept {
    auto found =
        std::find_if(fields.begin(), fields.end(), [&](Field const& field) { return field.name == name; });
    return found == fields.end() ? nullptr : &found->value;
}

ObjectState::Value* ObjectState::Find(String const& name) noexcept {
    return const_cast<Value*>(std::as_const(*this).Find(name));
}

std::size_t ObjectState::GetFieldCount() const noexcept {
    return fields.size();
}

bool ObjectState::IsEmpty() const noexcept {
    return fields.empty();
}

ObjectState::const_iterator ObjectState::begin() const noexcept {
    return fields.begin();
}

ObjectState::const_iterator ObjectState::end() const noexcept {
    return fields.end();
}

void ObjectState::Clear() noexcept {
    fields.clear();
}

void ObjectState::Enumerate(Processor& processor) const {
    for (Field const& field : fields) {
        ReportValue(processor, field.name, field.value);
    }
}

bool ObjectState::operator==(ObjectState const& other) const {
    return fields == other.fields;
}

bool ObjectState::Field::operator==(Field const& other) const {
    return name == other.name && value == other.value;
}

void ObjectState::List::Enumerate(Processor& processor) const {
    // Elements are unnamed; they are reported under one fixed name that is a valid XML element name, so
    // that a processor writing names as elements needs no case of its own.
    String const elementName(ListElementName);
    for (Value const& value : values) {
        ReportValue(processor, elementName, value);
    }
}

ObjectState::Processor::~Processor() = default;

void ObjectState::Processor::ObjectFound(String const& name, ObjectState const& object) {
    ObjectEntered(name);
    object.Enumerate(*this);
    ObjectExited(name);
}

void ObjectState::Processor::ListFound(String const& name, List const& list) {
    ListEntered(name);
    list.Enumerate(*this);
    ListExited(name);
}

} // namespace Tavo
