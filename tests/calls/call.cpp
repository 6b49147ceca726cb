#include "calls/call.hpp"

#include <algorithm>
#include <cstring>
#include <map>
#include <sstream>
#include <stdexcept>
#include <type_traits>
#include <utility>

namespace kesto::test {

namespace {

template <class Value>
constexpr FieldKind KindOf() {
    if constexpr (std::is_same_v<Value, double>) return FieldKind::Number;
    if constexpr (std::is_same_v<Value, std::int32_t>) return FieldKind::Whole;
    if constexpr (std::is_same_v<Value, std::int64_t>) return FieldKind::Size;
    if constexpr (std::is_same_v<Value, char> || std::is_same_v<std::remove_extent_t<Value>, char>) {
        return FieldKind::Text;
    }
    return std::is_array_v<Value> ? FieldKind::Bytes : FieldKind::Byte;
}

/// The fields of each record.
const std::map<std::string, std::vector<Field>>& RecordFields() {
    static const auto made = [] {
        std::map<std::string, std::vector<Field>> all;
#define KESTO_FIELD(Record, field) \
    all[#Record].push_back({#field, KindOf<decltype(Record::field)>(), offsetof(Record, field), sizeof(Record::field)});
#define KESTO_ROW(...)
#include "calls/calls.inc"
#undef KESTO_FIELD
#undef KESTO_ROW
        return all;
    }();
    return made;
}

template <class Value>
std::string RecordName() {
#define KESTO_FIELD(Record, field) \
    if (std::is_same_v<Value, Record>) return #Record;
#define KESTO_ROW(...)
#include "calls/calls.inc"
#undef KESTO_FIELD
#undef KESTO_ROW
    return {};
}

template <class Value>
void Describe(Parameter& parameter) {
    parameter.size = sizeof(Value);
    parameter.record = RecordName<Value>();
    if (!parameter.record.empty()) {
        parameter.fields = RecordFields().at(parameter.record);
    } else {
        static_assert(!std::is_class_v<Value> || sizeof(Value) >= sizeof(BrokenChain), "no plain value");
        parameter.fields = {{parameter.name, KindOf<Value>(), 0, sizeof(Value)}};
    }
}

/// A parameter by its type and by the text of the table: a name with its marks.
template <class Type>
Parameter Described(std::string word) {
    Parameter parameter{};
    const auto marks = word.find_first_of(">=?");
    const std::string mark = marks == std::string::npos ? "" : word.substr(marks);
    parameter.name = word.substr(0, marks);
    parameter.isWritten = mark.find_first_of(">=") != std::string::npos;
    parameter.isRead = mark.find('>') == std::string::npos;
    parameter.mayBeNull = mark.find('?') != std::string::npos;
    using Pointed = std::remove_const_t<std::remove_pointer_t<Type>>;
    if constexpr (std::is_same_v<Type, RoadDesign*>) {
        parameter.kind = ParameterKind::Handle;
    } else if constexpr (std::is_same_v<Type, double>) {
        parameter.kind = ParameterKind::Number;
    } else if constexpr (std::is_same_v<Type, std::int32_t>) {
        parameter.kind = ParameterKind::Whole;
    } else if constexpr (std::is_same_v<Type, std::int64_t>) {
        parameter.kind = ParameterKind::Size;
    } else if constexpr (std::is_same_v<Type, const char*>) {
        parameter.kind = ParameterKind::Text;
    } else if constexpr (requires(Pointed it) { it.items, it.capacity; }) {
        parameter.kind = ParameterKind::Array;
        Describe<std::remove_pointer_t<decltype(Pointed::items)>>(parameter);
    } else {
        static_assert(std::is_pointer_v<Type>, "the table of calls knows no such argument");
        parameter.kind = ParameterKind::Memory;
        Describe<Pointed>(parameter);
    }
    return parameter;
}

template <class Type>
Type Take(RoadDesign* road, Argument& argument) {
    if constexpr (std::is_same_v<Type, RoadDesign*>) {
        return road;
    } else if constexpr (std::is_same_v<Type, double>) {
        return argument.number;
    } else if constexpr (std::is_integral_v<Type>) {
        return static_cast<Type>(argument.whole);
    } else {
        constexpr bool isArray = requires(std::remove_pointer_t<Type> it) { it.items, it.capacity; };
        return static_cast<Type>(argument.Place(isArray ? ParameterKind::Array : ParameterKind::Memory));
    }
}

template <class Result>
Outcome OutcomeOf(Gives gives, Result result) {
    Outcome outcome;
    if constexpr (std::is_pointer_v<Result>) {
        outcome.failed = result == nullptr;
        outcome.number = outcome.failed ? 0 : 1;
        if constexpr (std::is_same_v<Result, RoadDesign*>) outcome.handle = result;
    } else {
        outcome.number = static_cast<double>(result);
        outcome.failed = gives == Gives::Success ? result == Result{} : gives == Gives::Status && result != Result{};
    }
    return outcome;
}

template <class Result, class... Types>
struct Row {
    template <auto function, Gives gives>
    static Outcome Run(RoadDesign* road, std::vector<Argument>& arguments) {
        return [&]<std::size_t... places>(std::index_sequence<places...>) {
            if constexpr (std::is_void_v<Result>) {
                function(Take<Types>(road, arguments[places])...);
                return Outcome();
            } else {
                return OutcomeOf(gives, function(Take<Types>(road, arguments[places])...));
            }
        }
        (std::index_sequence_for<Types...>());
    }

    static std::vector<Parameter> Parameters(std::istringstream words) {
        [[maybe_unused]] const auto next = [&] {
            std::string word;
            words >> word;
            return word;
        };
        return {Described<Types>(next())...};
    }
};

template <class Result, class... Types>
Row<Result, Types...> RowOf(Result(KESTO_CALL*)(Types...));

}  // namespace

void* Argument::Place(ParameterKind kind) {
    if (isNull) return nullptr;
    if (kind != ParameterKind::Array) return memory.data() + begin;
    array.items = memory.data();
    array.count = count;
    array.capacity = capacity;
    return &array;
}

std::string Argument::Bytes() const {
    return std::string(reinterpret_cast<const char*>(memory.data()), memory.size()) +
           std::to_string(array.items == nullptr ? count : array.count);
}

int Call::Find(std::string_view parameter) const {
    const auto found = std::ranges::find(parameters, parameter, &Parameter::name);
    return found == parameters.end() ? -1 : static_cast<int>(found - parameters.begin());
}

const std::vector<Call>& Calls() {
    static const std::vector<Call> calls = {
#define KESTO_FIELD(Record, field)
#define KESTO_ROW(function, effect, gives, words)                                                               \
    {#function, Effect::effect, Gives::gives, decltype(RowOf(function))::Parameters(std::istringstream(words)), \
     decltype(RowOf(function))::template Run<function, Gives::gives>},
#include "calls/calls.inc"
#undef KESTO_FIELD
#undef KESTO_ROW
    };
    return calls;
}

const Call& CallNamed(std::string_view name) {
    const auto found = std::ranges::find(Calls(), name, &Call::name);
    if (found == Calls().end()) throw std::invalid_argument("no such function: " + std::string(name));
    return *found;
}

std::string BytesOf(const std::vector<Argument>& arguments) {
    std::string bytes;
    for (const Argument& argument : arguments) bytes += argument.Bytes() + '|';
    return bytes;
}

}  // namespace kesto::test
