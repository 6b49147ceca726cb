/// A value, or the reason why there is none.
#pragma once

#include <optional>
#include <utility>
#include <variant>

#include "core/status.hpp"

namespace kesto {

/// A value of type T, or the Failure that prevented it. Rooms return it, the boundary guard keeps the failure.
template <class T>
class [[nodiscard]] Result {
public:
    Result(T value) : content(std::move(value)) {}        // NOLINT(google-explicit-constructor)
    Result(const Failure& failure) : content(failure) {}  // NOLINT(google-explicit-constructor)

    explicit operator bool() const noexcept { return std::holds_alternative<T>(content); }
    const T& operator*() const noexcept { return *std::get_if<T>(&content); }
    T& operator*() noexcept { return *std::get_if<T>(&content); }
    const T* operator->() const noexcept { return std::get_if<T>(&content); }
    /// The reason; only where there is no value.
    const Failure& failure() const noexcept { return *std::get_if<Failure>(&content); }

private:
    std::variant<T, Failure> content;
};

/// Done, or the Failure that prevented it.
template <>
class [[nodiscard]] Result<void> {
public:
    Result() = default;
    Result(const Failure& failure) : reason(failure) {}  // NOLINT(google-explicit-constructor)

    explicit operator bool() const noexcept { return !reason; }
    /// The reason; only where it failed.
    const Failure& failure() const noexcept { return *reason; }

private:
    std::optional<Failure> reason;
};

using Outcome = Result<void>;

}  // namespace kesto
