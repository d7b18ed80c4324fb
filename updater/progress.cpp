#include "updater/progress.h"

#include <algorithm>
#include <array>

namespace updater {

namespace {

struct Share {
  const char* words;
  int begin;  ///< per cent of the whole
  int end;
};

// Nearly all of the time goes into the download.
constexpr std::array kShares{Share{"正在尋找新版本", 0, 2}, Share{"正在下載新版本", 2, 85},
                             Share{"正在試用新版本", 85, 97}, Share{"正在換成新版本", 97, 100},
                             Share{"更新完成", 100, 100}};

const Share& ShareOf(Step step) { return kShares.at(static_cast<std::size_t>(step)); }

}  // namespace

void Progress::Begin(Step step) {
  step_ = step;
  percent_ = std::max(percent_, ShareOf(step).begin) - 1;  // the words are new in any case
  Reach(percent_ + 1);
}

void Progress::Advance(std::uint64_t done, std::uint64_t all) {
  const Share& share = ShareOf(step_);
  const std::uint64_t width = static_cast<std::uint64_t>(share.end - share.begin);
  if (all > 0) Reach(share.begin + static_cast<int>(width * std::min(done, all) / all));
}

void Progress::Reach(int percent) {
  if (percent <= percent_) return;
  percent_ = percent;
  if (watcher_) watcher_(percent, ShareOf(step_).words);
}

}  // namespace updater
