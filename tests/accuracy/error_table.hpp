/// What was measured, kind by kind: how many cases, the worst error and the one that 99.9 % keep, the bar.
#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace accuracy {

/// Errors of one kind.
class Errors {
public:
    Errors(std::string name, std::string bar, bool counts)
        : kind(std::move(name)), barText(std::move(bar)), mustPass(counts) {}

    /// @param error m or degrees, infinite where there was no answer or a wrong one
    /// @param bar   what this very case may show
    void Add(double error, double bar);

    const std::string& Kind() const { return kind; }
    /// The first word of the kind.
    std::string Question() const { return kind.substr(0, kind.find(' ')); }
    bool Passed() const { return !mustPass || worstShare <= 1; }
    std::string Row() const;
    std::size_t Count() const { return errors.size(); }

private:
    std::string kind;
    std::string barText;
    bool mustPass;
    std::vector<double> errors;
    double worstShare = 0;  // of the bar
};

/// The kinds, in the order in which they were met.
class ErrorTable {
public:
    /// The errors of a kind. One that does not count is reported apart.
    Errors& Of(const std::string& kind, const std::string& bar, bool counts = true);
    const std::vector<Errors>& Kinds() const { return kinds; }
    bool Passed() const;
    /// As a table in Markdown, the kinds of one question together.
    std::string Text() const;

private:
    std::vector<Errors> kinds;
};

}  // namespace accuracy
