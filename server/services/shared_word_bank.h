// The one word bank that all requests share. It is read when it is first asked.
#pragma once

#include <filesystem>
#include <future>
#include <memory>

#include "engine/wexbin.h"
#include "server/services/log.h"

namespace server {

class SharedWordBank {
 public:
  /// @param dataDir folder of the engine's language data
  explicit SharedWordBank(const std::filesystem::path& dataDir)
      : bank_(std::async(std::launch::deferred, [dataDir] {
          return LoadOrLog("word bank", [&] { return std::make_shared<const wexbin::WordBank>(dataDir); });
        })) {}

  /// May be called from several threads at once. Throws std::runtime_error when the data is missing or
  /// damaged; why is logged, once.
  const wexbin::WordBank& Get() const { return *bank_.get(); }

 private:
  std::shared_future<std::shared_ptr<const wexbin::WordBank>> bank_;
};

}  // namespace server
