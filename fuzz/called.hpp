/// Exported functions under their names, and which of them have answered.
#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <type_traits>

namespace kesto::fuzz {

/// Those that have been called with success.
inline std::set<std::string>& CalledNames() {
    static std::set<std::string> names;
    return names;
}

/// Whether the integer that a function returns is a status rather than a number that was asked for.
constexpr bool ReturnsStatus(std::string_view name) {
    for (const std::string_view beginning : {"Open", "Save", "Export"}) {
        if (name.starts_with(beginning)) return !name.ends_with("Count");
    }
    return false;
}

/// An exported function that leaves its name when it is called and does not fail.
template <class Function>
struct Named {
    const char* name;
    Function* function;
    bool* answered;

    template <class... Arguments>
    auto operator()(Arguments... arguments) const {
        if constexpr (std::is_void_v<decltype(function(arguments...))>) {
            function(arguments...);
            Note(true);
        } else {
            const auto result = function(arguments...);
            if constexpr (std::is_same_v<decltype(result), const std::int32_t>) {
                Note(!ReturnsStatus(name) || result == 0);
            } else {
                Note(result != decltype(result){});
            }
            return result;
        }
    }

private:
    void Note(bool success) const {
        if (*answered || !success) return;
        *answered = true;
        CalledNames().insert(name);
    }
};

}  // namespace kesto::fuzz

/// The exported function of this name as a Named.
#define KESTO_NAMED(function)                                                 \
    (kesto::fuzz::Named<decltype(function)>{#function, &(function), []() {    \
                                                static bool answered = false; \
                                                return &answered;             \
                                            }()})
