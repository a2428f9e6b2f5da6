// Tavo::ObjectState: a generic tree of named, typed values. A state is an ordered sequence of fields;
// each field has a name (8-bit Tavo::String) and a value that is a boolean, a signed or unsigned 64-bit
// integer, a real, a Tavo::UniString, a nested ObjectState or a List. A List holds unnamed values of
// any of these kinds, lists included.
//
// Building by hand:
//
//     Tavo::ObjectState state;
//     state.AddInt("count", 3).AddString("title", "Plan");
//     Tavo::ObjectState& origin = state.AddObject("origin");
//     origin.AddReal("x", 1.5).AddReal("y", -2.0);
//     Tavo::ObjectState::List& rows = state.AddList("rows");
//     rows.PushList().PushUInt(1).PushUInt(2);
//     rows.PushObject().AddBool("visible", true);
//
// The scalar Add.../Push... operations return the container they added to, for chaining; AddObject,
// AddList, PushObject and PushList return the new nested container. Nested objects and lists live on
// the heap, so a reference to one stays valid while its parent grows; it ends when its parent is
// destroyed, cleared, rebuilt or assigned to.
//
// Reading: Find a field by name, iterate the fields in order, or have Enumerate report the whole tree
// to a Processor. Writing from events: Build pulls field and value events from a Content.
#pragma once

#include "TavoRoot/String.hpp"
#include "TavoRoot/TavoRootExport.hpp"
#include "TavoRoot/UniString.hpp"
#include "TavoRoot/XMLTypes.hpp" // NoError, GeneralError: the results of Build

#include <cstddef>
#include <memory>
#include <variant>
#include <vector>

namespace Tavo {

class TAVOROOT_API ObjectState {
public:
    // The name under which Enumerate reports the elements of a list.
    static constexpr char ListElementName[] = "list_value";

    class Value;
    class List;
    struct Field;
    class Processor;
    class Content;
    class ContentProcessor;

    using const_iterator = std::vector<Field>::const_iterator;

    ObjectState() noexcept;
    ObjectState(ObjectState const& other);
    ObjectState(ObjectState&& other) noexcept;
    ObjectState& operator=(ObjectState const& other);
    ObjectState& operator=(ObjectState&& other) noexcept;
    ~ObjectState();

    // Appends a field. Names need not be unique; Find sees the first field of a name.
    ObjectState& AddBool(String const& name, bool value);
    ObjectState& AddInt(String const& name, long long value);
    ObjectState& AddUInt(String const& name, unsigned long long value);
    ObjectState& AddReal(String const& name, double value);
    ObjectState& AddString(String const& name, UniString value);
    // Appends an empty nested object or list and returns it.
    ObjectState& AddObject(String const& name);
    List& AddList(String const& name);
    // Appends a field with a value of any kind and returns the stored value.
    Value& Add(String const& name, Value value);

    // The value of the first field called `name`, or null. Adding fields may invalidate the pointer.
    Value const* Find(String const& name) const noexcept;
    Value* Find(String const& name) noexcept;

    std::size_t GetFieldCount() const noexcept;
    bool IsEmpty() const noexcept;
    // The fields in the order they were added.
    const_iterator begin() const noexcept;
    const_iterator end() const noexcept;
    void Clear() noexcept;

    // Reports the fields, in order, to `processor`: a scalar by its ...Found operation, a nested object
    // by ObjectFound and a list by ListFound, each with the field's name. The state itself gets no
    // entry or exit event: its fields are reported at the processor's current level.
    void Enumerate(Processor& processor) const;

    // Replaces the content of this state by what `content` reports to a ContentProcessor. The events
    // must open a root object first, describe its fields, and close it last. Returns NoError (0), or
    // GeneralError for an event stream that is unbalanced or malformed; the state is then empty. An
    // exception from the content also leaves the state empty and passes on. The state is built aside
    // and takes its new content at the end, so the content may read this state while it reports.
    int Build(Content const& content);

    // Equal when both have the same fields in the same order: same names, same kinds, equal values.
    // Reals compare by value, except that a NaN equals a NaN, so that a state always equals its copy.
    bool operator==(ObjectState const& other) const;

private:
    std::vector<Field> fields;
};

// An unnamed value of one of the seven kinds. Copies are deep. A moved-from value may only be assigned
// to or destroyed.
class TAVOROOT_API ObjectState::Value {
public:
    enum class Kind { Bool, Int, UInt, Real, String, Object, List };

    explicit Value(bool value) noexcept;
    explicit Value(long long value) noexcept;
    explicit Value(unsigned long long value) noexcept;
    explicit Value(double value) noexcept;
    explicit Value(UniString value) noexcept;
    explicit Value(ObjectState value);
    explicit Value(List value);
    // A pointer would otherwise silently become a boolean.
    explicit Value(char const*) = delete;

    Value(Value const& other);
    Value(Value&& other) noexcept;
    Value& operator=(Value const& other);
    Value& operator=(Value&& other) noexcept;
    ~Value();

    Kind GetKind() const noexcept;

    // Typed access; each throws std::bad_variant_access if the value is of another kind.
    bool GetBool() const;
    long long GetInt() const;
    unsigned long long GetUInt() const;
    double GetReal() const;
    UniString const& GetString() const;
    ObjectState const& GetObject() const;
    ObjectState& GetObject();
    List const& GetList() const;
    List& GetList();

    // Same kind and equal content; see ObjectState::operator== for reals.
    bool operator==(Value const& other) const;

private:
    // Alternatives in the order of Kind. Nested containers are boxed: that breaks the recursion of
    // the types and keeps references to them stable when their parent's storage moves.
    using Data = std::variant<bool, long long, unsigned long long, double, UniString,
                              std::unique_ptr<ObjectState>, std::unique_ptr<List>>;
    Data data;
};

// An ordered sequence of unnamed values.
class TAVOROOT_API ObjectState::List {
public:
    using const_iterator = std::vector<Value>::const_iterator;

    List() noexcept;
    List(List const& other);
    List(List&& other) noexcept;
    List& operator=(List const& other);
    List& operator=(List&& other) noexcept;
    ~List();

    // Append an element and return this list.
    List& PushBool(bool value);
    List& PushInt(long long value);
    List& PushUInt(unsigned long long value);
    List& PushReal(double value);
    List& PushString(UniString value);
    // Append an empty nested object or list and return it.
    ObjectState& PushObject();
    List& PushList();
    // Appends a value of any kind and returns the stored value.
    Value& Push(Value value);

    std::size_t GetSize() const noexcept;
    bool IsEmpty() const noexcept;
    // The element at `index`, which must be below GetSize().
    Value const& operator[](std::size_t index) const noexcept;
    Value& operator[](std::size_t index) noexcept;
    const_iterator begin() const noexcept;
    const_iterator end() const noexcept;
    void Clear() noexcept;

    // Reports the elements, in order, to `processor` as ObjectState::Enumerate reports fields. Elements
    // have no name of their own: each is reported with the name ListElementName, "list_value".
    void Enumerate(Processor& processor) const;

    bool operator==(List const& other) const;

private:
    std::vector<Value> values;
};

struct TAVOROOT_API ObjectState::Field {
    String name;
    Value value;

    bool operator==(Field const& other) const;
};

// Receiver of the events of Enumerate. Every operation gets the field's name first; elements of a list
// get ListElementName, "list_value": a valid XML element name, which the XML bridge writes for a list or
// an object inside a list, and by which its reader knows a list of lists.
class TAVOROOT_API ObjectState::Processor {
public:
    virtual ~Processor();

    virtual void BoolFound(String const& name, bool value) = 0;
    virtual void IntFound(String const& name, long long value) = 0;
    virtual void UIntFound(String const& name, unsigned long long value) = 0;
    virtual void RealFound(String const& name, double value) = 0;
    virtual void StringFound(String const& name, UniString const& value) = 0;
    // A nested object. By default: ObjectEntered(name), the object's fields as Enumerate reports them,
    // ObjectExited(name).
    virtual void ObjectFound(String const& name, ObjectState const& object);
    virtual void ObjectEntered(String const& name) = 0;
    virtual void ObjectExited(String const& name) = 0;
    // A list. It comes with the list itself, as ObjectFound comes with the object: a name alone can't
    // find it, since names may repeat and list elements have none. By default: ListEntered(name), the
    // elements as List::Enumerate reports them, ListExited(name).
    virtual void ListFound(String const& name, List const& list);
    virtual void ListEntered(String const& name) = 0;
    virtual void ListExited(String const& name) = 0;

protected:
    Processor() = default;
    Processor(Processor const&) = default;
    Processor& operator=(Processor const&) = default;
};

// A source of events from which Build makes a state.
class TAVOROOT_API ObjectState::Content {
public:
    virtual ~Content();
    // Reports a whole state to `processor`: ObjectEntered for the root, then for each field FieldFound
    // followed by its value (a scalar event, or an entry, the content and the matching exit), and
    // ObjectExited for the root. Inside a list, values come without FieldFound.
    virtual void Enumerate(ContentProcessor& processor) const = 0;

protected:
    Content() = default;
    Content(Content const&) = default;
    Content& operator=(Content const&) = default;
};

// The receiver that Build hands to Content::Enumerate. It checks the stream as it goes; after the first
// malformed event it ignores the rest, and Build then reports the failure.
class TAVOROOT_API ObjectState::ContentProcessor {
public:
    ContentProcessor(ContentProcessor const&) = delete;
    ContentProcessor& operator=(ContentProcessor const&) = delete;
    ~ContentProcessor();

    // The name of the field whose value comes next; not allowed inside a list.
    void FieldFound(String const& name);
    void BoolFound(bool value);
    void IntFound(long long value);
    void UIntFound(unsigned long long value);
    void RealFound(double value);
    void StringFound(UniString const& value);
    // The first ObjectEntered opens the root; every later one a nested object.
    void ObjectEntered();
    void ObjectExited();
    void ListEntered();
    void ListExited();

private:
    friend class ObjectState;
    enum class Phase { BeforeRoot, InRoot, AfterRoot, Failed };
    // One open container: exactly one of the two is set.
    struct Frame {
        ObjectState* object;
        List* list;
    };

    explicit ContentProcessor(ObjectState& root);
    // Where a value arriving now goes, or null (and the stream failed) if it may not come here.
    Value* Store(Value value);
    void Exit(bool isList);
    bool Succeeded() const noexcept;

    ObjectState& root;
    std::vector<Frame> open;
    String pendingName;
    bool hasPendingName = false;
    Phase phase = Phase::BeforeRoot;
};

} // namespace Tavo
