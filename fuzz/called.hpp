/// Exported functions under their names, and which of them have been called.
#pragma once

#include <set>
#include <string>

namespace kesto::fuzz {

inline std::set<std::string>& CalledNames() {
    static std::set<std::string> names;
    return names;
}

/// An exported function that leaves its name when it is called.
template <class Function>
struct Named {
    const char* name;
    Function* function;
    bool* called;

    template <class... Arguments>
    auto operator()(Arguments... arguments) const {
        if (!*called) {
            *called = true;
            CalledNames().insert(name);
        }
        return function(arguments...);
    }
};

}  // namespace kesto::fuzz

/// The exported function of this name as a Named.
#define KESTO_NAMED(function)                                               \
    (kesto::fuzz::Named<decltype(function)>{#function, &(function), []() {  \
                                                static bool called = false; \
                                                return &called;             \
                                            }()})
