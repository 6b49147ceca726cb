// The small accuracy set: every kind of question keeps its bar.

#include <gtest/gtest.h>

#include "case_reader.hpp"

using accuracy::CaseReader;
using accuracy::Errors;

TEST(Accuracy, TheSmallSetKeepsEveryBar) {
    const CaseReader reader = accuracy::ReadSet(KESTO_SMALL_SET);
    EXPECT_GT(reader.Cases(), 3000);
    EXPECT_GT(reader.Table().Kinds().size(), 30U);
    for (const Errors& it : reader.Table().Kinds()) EXPECT_TRUE(it.Passed()) << it.Row();
}

// A wrong answer in the set must show: the reader would otherwise pass whatever the library says.
TEST(Accuracy, AWrongAnswerIsFound) {
    const struct {
        const char* question;
        const char* answer;  // right
        const char* wrong;
    } cases[] = {
        {"point 10", "10 0 0", "10 0.00000002 0"},
        {"position 10 0 2", "10 2 0", "10 2 0.000000002"},
        {"position 10 1 2", nullptr, "10 2 0"},
        {"foot 30 5 1", "30 0 5 1", "30.0000002 0 5 1"},
        {"foot 30 5 1", nullptr, "30 0 5.0000002 1"},
        {"foot 30 5 1", nullptr, "30 1 5 1"},
        {"continuous 30 0", "30", "30.00000002"},
        {"continuous 30 1", "none", "30"},
        {"continuous 30 0", nullptr, "none"},
        {"station 30 0", "", nullptr},
        {"station 30 1", nullptr, ""},
        {"height 30 0 0", "7.5", "7.50000002"},
        {"height 30 0 3", "7.53", "7.53000002"},
        {"side 30 0 1", "4 1 4 30 4 7.54", "4 1 4 30 4 7.54000002"},
        {"side 30 0 1", nullptr, "4.00000002 1 4 30 4 7.54"},
        {"side 30 0 1", nullptr, "4 1.00000002 4 30 4 7.54"},
        {"side 30 0 1", nullptr, "4 1 4 30 4.00000002 7.54"},
        {"side 30 0 1", nullptr, "nan 1 4 30 4 7.54"},  // no number on either side is infinitely wrong
        {"side 30 0 1", nullptr, "4 1 4 30 nan 7.54"},
    };
    for (const auto& it : cases) {
        for (const char* const answer : {it.answer, it.wrong}) {
            if (answer == nullptr) continue;
            CaseReader reader;
            for (const char* const line :
                 {"kind any", "road 0", "element 1 0 0 0 0 0 0 100", "profile 0", "grade 0 0 6 0 0 -1 0 -1",
                  "grade 100 0 11 0 0 -1 0 -1", "plate 0 4 1 0", "plate 1 4 1 0"}) {
                reader.Read(line);
            }
            reader.Read(std::string(it.question) + ' ' + answer);
            EXPECT_EQ(reader.Table().Passed(), answer == it.answer) << it.question << ' ' << answer;
        }
    }
}
