/// Bytes of a fuzzer become arguments: mostly ordinary ones, as a road of hostile numbers alone answers nothing.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <limits>
#include <string>

namespace kesto::fuzz {

/// Reads from the front; past the end everything is 0.
class Bytes {
public:
    Bytes(const std::uint8_t* data, std::size_t size) noexcept : next(data), left(size) {}

    bool AtEnd() const noexcept { return left == 0; }

    std::uint8_t Byte() noexcept {
        if (left == 0) return 0;
        --left;
        return *next++;
    }

    template <class Value>
    Value Raw() noexcept {
        Value value{};
        const std::size_t size = std::min(left, sizeof value);
        if (size > 0) std::memcpy(&value, next, size);
        next += size;
        left -= size;
        return value;
    }

    /// One in 256 says yes: for the null pointers among good ones.
    bool Rarely() noexcept { return Byte() == 0xFF; }

    /// An index, mostly one that a list of so many records has.
    std::int32_t Index(std::int32_t count) noexcept {
        constexpr std::uint8_t firstOther = 224;
        const std::uint8_t byte = Byte();
        if (byte < firstOther) return count > 0 ? byte % count : 0;
        if (byte == firstOther) return count;
        return Extreme(byte);
    }

    /// A mode, side, kind, occurrence or type.
    std::int32_t Whole() noexcept {
        constexpr std::uint8_t firstOther = 232;
        const std::uint8_t byte = Byte();
        return byte < firstOther ? byte % 4 : Extreme(byte);
    }

    double Number() noexcept {
        constexpr std::uint8_t firstPlace = 80, firstFloat = 208, firstDouble = 224;
        const std::uint8_t kind = Byte();
        if (kind < std::size(special)) return special[kind];
        if (kind < firstPlace) return usual[kind % std::size(usual)];
        if (kind < firstFloat)
            return Raw<std::uint16_t>() * 0.02 - 100;  // a place or an offset at a road of some 1200 m
        if (kind < firstDouble) return Raw<float>();
        return Raw<double>();
    }

    std::string Text() {
        std::string text(Byte() % 48U, '\0');
        for (char& character : text) character = static_cast<char>(Byte());
        return text;
    }

    /// A field of a record, which need not end within it.
    template <std::size_t Size>
    void Field(char (&field)[Size]) {
        const std::string text = Text();
        std::memset(field, 0, Size);
        std::memcpy(field, text.data(), std::min(text.size(), Size));
    }

private:
    using Limits = std::numeric_limits<double>;
    static constexpr double special[] = {0,
                                         -0.0,
                                         1e-8,
                                         -1e-8,
                                         1e-7,
                                         1e-5,
                                         1e15,
                                         -1e15,
                                         1e300,
                                         -1e300,
                                         Limits::max(),
                                         Limits::lowest(),
                                         Limits::denorm_min(),
                                         Limits::infinity(),
                                         -Limits::infinity(),
                                         Limits::quiet_NaN()};
    static constexpr double usual[] = {50,  100, 150, 200, 300,  400, 500, 800, 90, 45,
                                       180, 1,   2,   3.5, -2.5, -50, 20,  60,  80, 1000};

    std::int32_t Extreme(std::uint8_t byte) noexcept {
        switch (byte % 8) {
            case 0: return -1;
            case 1: return std::numeric_limits<std::int32_t>::max();
            case 2: return std::numeric_limits<std::int32_t>::min();
            case 3: return -2;
            case 4: return 255;
            case 5: return 17;
            default: return Raw<std::int32_t>();
        }
    }

    const std::uint8_t* next;
    std::size_t left;
};

}  // namespace kesto::fuzz
