/// Every exported function as a row of one table, with its arguments as data: what walks over all functions is written
/// once. The rows come from the header, see scripts/interface.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "kesto_road/kesto_road.h"

namespace kesto::test {

/// What a function does to its road: edits it, answers (and may build what it needs), or begins and ends it.
enum class Effect { Edits, Answers, Life };

/// What the result of a function tells.
enum class Gives { None, Success, Truth, Status, Whole, Number, Text, Handle };

enum class FieldKind { Number, Whole, Size, Byte, Text, Bytes };

/// A value in memory: a field of a record, or a number behind a pointer.
struct Field {
    std::string name;
    FieldKind kind;
    std::size_t offset;
    std::size_t size;
};

enum class ParameterKind { Handle, Number, Whole, Size, Text, Memory, Array };

/// A parameter of a function.
struct Parameter {
    std::string name;
    ParameterKind kind;
    bool isRead;
    bool isWritten;
    bool mayBeNull;
    std::size_t size = 0;       // bytes of what it points at, of an array's record
    std::string record;         // its type, where it is a record
    std::vector<Field> fields;  // of what it points at

    bool IsPointer() const { return kind >= ParameterKind::Text; }
};

/// Values of a call's arguments. Pointers lead to memory of the argument's own, of just the size that the call may use.
struct Argument {
    double number = 0;
    std::int64_t whole = 0;
    bool isNull = false;
    std::vector<std::uint8_t> memory;      // what the pointer leads to, or the records of an array
    std::size_t begin = 0;                 // where in it the pointer leads
    std::int32_t count = 0, capacity = 0;  // of an array
    struct {
        void* items;
        std::int32_t count, capacity;
    } array{};  // as it is handed over

    /// The pointer for a call.
    void* Place(ParameterKind kind);

    /// All that a call may have written.
    std::string Bytes() const;
};

/// What a call gave.
struct Outcome {
    bool failed = false;  // by its result
    double number = 0;    // its result; of a text 1 where there is one
    void* handle = nullptr;
    bool operator==(const Outcome&) const = default;
};

/// An exported function.
struct Call {
    std::string_view name;
    Effect effect;
    Gives gives;
    std::vector<Parameter> parameters;
    Outcome (*run)(RoadDesign* road, std::vector<Argument>& arguments);

    bool HasHandle() const { return !parameters.empty() && parameters[0].kind == ParameterKind::Handle; }

    /// The place of the parameter; -1 where there is none of this name.
    int Find(std::string_view parameter) const;
};

/// All exported functions, in the order of the header.
const std::vector<Call>& Calls();

/// The call of this name, which must exist.
const Call& CallNamed(std::string_view name);

/// All that the arguments lead to, as bytes.
std::string BytesOf(const std::vector<Argument>& arguments);

}  // namespace kesto::test
