/// Writes the lines of the set: words and numbers with a blank between them.
#pragma once

#include <cstdio>
#include <map>
#include <string>
#include <string_view>

#include "real.hpp"

namespace reference {

/// A line; it is written when it ends.
class Line {
public:
    Line(std::FILE* out, std::string_view word) : file(out), text(word) {}
    Line(const Line&) = delete;
    Line& operator=(const Line&) = delete;
    ~Line();

    /// A number as the library is given it: the shortest decimal that is this very double.
    Line& Given(double number);
    /// A number of the reference, sixteen decimals.
    Line& Exact(const Real& number);
    Line& Whole(long number);
    Line& Word(std::string_view word);

private:
    std::FILE* file;
    std::string text;
};

class SetWriter {
public:
    explicit SetWriter(std::FILE* out) : file(out) {}

    Line Begin(std::string_view word) const { return {file, word}; }
    /// Begins the cases of a kind, unless it is the one that is written.
    void Kind(const std::string& name);
    /// Counts what was drawn and not written.
    void LeaveOut(const std::string& reason) { ++leftOut[reason]; }
    void WriteLeftOut() const;

private:
    std::FILE* file;
    std::string kind;
    std::map<std::string, long> leftOut;
};

}  // namespace reference
