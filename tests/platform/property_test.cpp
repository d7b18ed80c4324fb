#include "platform/property.h"

#include <gmock/gmock.h>

#include <string>

namespace marovane {

namespace {

using ::testing::ElementsAre;

TEST(Property, TellsEachWatcherOfEachAssignmentAlsoOfAnEqualOne) {
  Property<int> width{3};
  std::vector<int> told;
  const auto first = width.Watch([&told](int value) { told.push_back(value); });
  auto second = width.Watch([&told](int value) { told.push_back(-value); });
  width = 3;
  second.reset();
  width = 4;
  EXPECT_THAT(told, ElementsAre(3, -3, 4));
}

TEST(Property, LetsAWatcherLeaveJoinAndAssignWhileItIsTold) {
  Property<std::string> caption;
  std::vector<std::string> told;
  Subscription leaving;
  Subscription joined;
  leaving = caption.Watch([&](const std::string&) {
    leaving.reset();
    joined = caption.Watch([&told](const std::string& value) { told.push_back("joined " + value); });
  });
  const auto repairing = caption.Watch([&](const std::string& value) {
    told.push_back(value);
    if (value == "wrong") caption = std::string("right");
  });
  caption = std::string("wrong");
  EXPECT_EQ(caption(), "right");
  EXPECT_THAT(told, ElementsAre("wrong", "right", "joined right"));
}

TEST(Property, CopiesTheValueButNotTheWatchers) {
  Property<int> from{1};
  Property<int> to{2};
  int told = 0;
  const auto watch = from.Watch([&told](int) { ++told; });
  to = from;
  EXPECT_EQ(to(), 1);
  to = 5;
  EXPECT_EQ(from(), 1);
  EXPECT_EQ(told, 0);
}

}  // namespace

}  // namespace marovane
