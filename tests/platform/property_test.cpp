#include "platform/property.h"

#include <gmock/gmock.h>

#include <string>

namespace marovane {

namespace {

using ::testing::ElementsAre;

TEST(Property, NotifiesEachWatcherOfEachAssignmentAlsoOfAnEqualOneAndOfACopy) {
  Property<int> width{3};
  Property<int> other{4};
  std::vector<int> heard;
  const auto first = width.Watch([&heard](int value) { heard.push_back(value); });
  auto second = width.Watch([&heard](int value) { heard.push_back(-value); });
  width = 3;
  second.reset();
  width = other;
  other = width;
  other = 5;
  EXPECT_THAT(heard, ElementsAre(3, -3, 4)) << "a copy has watchers of its own";
  EXPECT_EQ(width(), 4);
}

TEST(Property, LetsAWatcherLeaveJoinAndAssignWhileItIsNotified) {
  Property<std::string> caption;
  std::vector<std::string> heard;
  Subscription leaving;
  Subscription joined;
  leaving = caption.Watch([&](const std::string&) {
    leaving.reset();
    joined = caption.Watch([&heard](const std::string& value) { heard.push_back("joined " + value); });
  });
  const auto repairing = caption.Watch([&](const std::string& value) {
    heard.push_back(value);
    if (value == "wrong") caption = std::string("right");
  });
  caption = std::string("wrong");
  EXPECT_EQ(caption(), "right");
  EXPECT_THAT(heard, ElementsAre("wrong", "right", "joined right"));
}

}  // namespace

}  // namespace marovane
