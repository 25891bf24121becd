#include "standin/fault_book.h"

#include <gtest/gtest.h>

#include "tests/support/files.h"

namespace standin {
namespace {

class FaultBookTest : public testing::Test {
  protected:
    TempDir directory;
    RunPaths paths = run_paths(directory.path());
    CommandLog log{paths.log};
    FaultBook book{paths, log};

    void rules(const std::string& text) { ::write_file(paths.faults, text); }

    FaultKind at(const std::string& command) { return book.at(Event::command, command).kind; }
};

TEST_F(FaultBookTest, WithoutAFaultFileNothingGoesWrong) {
    EXPECT_EQ(book.reload(), "");
    EXPECT_EQ(at("commit"), FaultKind::none);
    EXPECT_FALSE(exists(paths.faults_seen));
}

TEST_F(FaultBookTest, TheNamedOccurrenceGoesWrongAndNoOther) {
    rules("\"commit\" 2 close\n");
    EXPECT_EQ(at("commit"), FaultKind::none);
    EXPECT_EQ(at("back"), FaultKind::none);
    EXPECT_EQ(at("commit"), FaultKind::close);
    EXPECT_EQ(at("commit"), FaultKind::none);
}

TEST_F(FaultBookTest, EveryOccurrenceGoesWrongWithAStar) {
    rules("\"commit\" * close\n");
    EXPECT_EQ(at("commit"), FaultKind::close);
    EXPECT_EQ(at("commit"), FaultKind::close);
}

TEST_F(FaultBookTest, TheFirstRuleWhoseTurnItIsCountsAndAllOfThemCount) {
    rules("\"commit\" 2 close\n\"\" * silent\n\"commit\" 3 refuse\n");
    EXPECT_EQ(at("commit"), FaultKind::silent);
    EXPECT_EQ(at("commit"), FaultKind::close);
    EXPECT_EQ(at("commit"), FaultKind::silent);
    rules("\"commit\" 3 refuse\n");
    EXPECT_EQ(at("commit"), FaultKind::none) << "the fourth since the rule stands there";
}

TEST_F(FaultBookTest, CountingGoesOnAfterARestart) {
    rules("\"commit\" 2 close\nstart 2 missing\n");
    at("commit");
    book.at(Event::start);
    FaultBook restarted(paths, log);
    EXPECT_EQ(restarted.at(Event::command, "commit").kind, FaultKind::close);
    EXPECT_EQ(restarted.at(Event::start).kind, FaultKind::missing);
}

TEST_F(FaultBookTest, ANewRuleCountsFromNowOnAndSoDoesOneThatWasAway) {
    rules("\"commit\" 3 refuse\n");
    at("commit");
    rules("\"commit\" 1 close\n");
    EXPECT_EQ(at("commit"), FaultKind::close);
    rules("\"commit\" 3 refuse\n");
    EXPECT_EQ(at("commit"), FaultKind::none);
    EXPECT_EQ(at("commit"), FaultKind::none);
    EXPECT_EQ(at("commit"), FaultKind::refuse);
}

TEST_F(FaultBookTest, WhileTheFileIsBadEverythingIsRefusedAndTheLogSaysWhy) {
    rules("nonsense\n");
    EXPECT_EQ(book.reload(), paths.faults + ": line 1 is no fault rule: nonsense");
    EXPECT_EQ(at("commit"), FaultKind::refuse);
    EXPECT_EQ(::read_file(paths.log),
              "# " + paths.faults + ": line 1 is no fault rule: nonsense\n");
    rules("");
    EXPECT_EQ(at("commit"), FaultKind::none);
}

TEST_F(FaultBookTest, AFaultIsNotedInTheLog) {
    rules("\"commit\" 1 close\n");
    at("commit");
    at("commit");
    EXPECT_EQ(::read_file(paths.log), "# fault: \"commit\" 1 close\n");
}

}  // namespace
}  // namespace standin
