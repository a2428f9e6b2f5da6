// Building a Tavo::ObjectState from events: Build, Content and the checking ContentProcessor.
#include "TavoRoot/ObjectState.hpp"

#include <utility>

namespace Tavo {

ObjectState::Content::~Content() = default;

ObjectState::ContentProcessor::ContentProcessor(ObjectState& root) : root(root) {}
ObjectState::ContentProcessor::~ContentProcessor() = default;

void ObjectState::ContentProcessor::FieldFound(String const& name) {
    // A name belongs to a field of an open object and must be followed by its value.
    if (phase != Phase::InRoot || open.back().list || hasPendingName) {
        phase = Phase::Failed;
        return;
    }
    pendingName = name;
    hasPendingName = true;
}

void ObjectState::ContentProcessor::BoolFound(bool value) {
    Store(Value(value));
}

void ObjectState::ContentProcessor::IntFound(long long value) {
    Store(Value(value));
}

void ObjectState::ContentProcessor::UIntFound(unsigned long long value) {
    Store(Value(value));
}

void ObjectState::ContentProcessor::RealFound(double value) {
    Store(Value(value));
}

void ObjectState::ContentProcessor::StringFound(UniString const& value) {
    Store(Value(value));
}

void ObjectState::ContentProcessor::ObjectEntered() {
    if (phase == Phase::BeforeRoot) {
        open.push_back(Frame{&root, nullptr});
        phase = Phase::InRoot;
    } else if (Value* value = Store(Value(ObjectState()))) {
        open.push_back(Frame{&value->GetObject(), nullptr});
    }
}

void ObjectState::ContentProcessor::ObjectExited() {
    Exit(false);
}

void ObjectState::ContentProcessor::ListEntered() {
    // Before the root this fails in Store: the root must be an object.
    if (Value* value = Store(Value(List()))) {
        open.push_back(Frame{nullptr, &value->GetList()});
    }
}

void ObjectState::ContentProcessor::ListExited() {
    Exit(true);
}

ObjectState::Value* ObjectState::ContentProcessor::Store(Value value) {
    if (phase != Phase::InRoot) {
        phase = Phase::Failed;
        return nullptr;
    }
    Frame const& top = open.back();
    if (top.list) {
        // Names inside a list were refused by FieldFound already.
        return &top.list->Push(std::move(value));
    }
    if (!hasPendingName) {
        phase = Phase::Failed;
        return nullptr;
    }
    hasPendingName = false;
    return &top.object->Add(pendingName, std::move(value));
}

void ObjectState::ContentProcessor::Exit(bool isList) {
    // The exit must match the innermost open container, and no name may be left without its value.
    if (phase != Phase::InRoot || (open.back().list != nullptr) != isList || hasPendingName) {
        phase = Phase::Failed;
        return;
    }
    open.pop_back();
    if (open.empty()) {
        phase = Phase::AfterRoot;
    }
}

bool ObjectState::ContentProcessor::Succeeded() const noexcept {
    return phase == Phase::AfterRoot;
}

int ObjectState::Build(Content const& content) {
    ObjectState built;
    ContentProcessor processor(built);
    try {
        content.Enumerate(processor);
    } catch (...) {
        Clear();
        throw;
    }
    if (!processor.Succeeded()) {
        Clear();
        return GeneralError;
    }
    *this = std::move(built);
    return NoError;
}

} // namespace Tavo
