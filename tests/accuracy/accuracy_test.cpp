// The small accuracy set: every kind of question keeps its bar.

#include <gtest/gtest.h>

#include "case_reader.hpp"

using accuracy::CaseReader;
using accuracy::Errors;

TEST(Accuracy, TheSmallSetKeepsEveryBar) {
    const CaseReader reader = accuracy::ReadSet(KESTO_SMALL_SET);
    EXPECT_GT(reader.Cases(), 1500);
    EXPECT_GT(reader.Table().Kinds().size(), 25U);
    for (const Errors& it : reader.Table().Kinds()) EXPECT_TRUE(it.Passed()) << it.Row();
}

// A wrong answer in the set must show: the reader would otherwise pass whatever the library says.
TEST(Accuracy, AWrongAnswerIsFound) {
    const struct {
        const char* question;
        const char* answer;  // right
        const char* wrong;
    } cases[] = {
        {"point 10", "10 0 0", "10 0.00000002 0"},    {"position 10 0 2", "10 2 0", "10 2 0.000000002"},
        {"position 10 1 2", nullptr, "10 2 0"},       {"foot 30 5 1", "30 0 5 1", "30.0000002 0 5 1"},
        {"foot 30 5 1", nullptr, "30 0 5.0000002 1"}, {"foot 30 5 1", nullptr, "30 1 5 1"},
        {"foot 30 5 1", nullptr, "30 0 nan 1"},  // no number is infinitely wrong
    };
    for (const auto& it : cases) {
        for (const char* const answer : {it.answer, it.wrong}) {
            if (answer == nullptr) continue;
            CaseReader reader;
            for (const char* const line : {"kind any", "road 0", "element 1 0 0 0 0 0 0 100"}) {
                reader.Read(line);
            }
            reader.Read(std::string(it.question) + ' ' + answer);
            EXPECT_EQ(reader.Table().Passed(), answer == it.answer) << it.question << ' ' << answer;
        }
    }
}
