#include "server/services/shared_word_bank.h"

#include <exception>

#include "server/services/log.h"

namespace server {
namespace {

std::shared_ptr<const wexbin::WordBank> LoadAndTell(const std::filesystem::path& dataDir) try {
  return std::make_shared<const wexbin::WordBank>(dataDir);
} catch (const std::exception& error) {
  LogError("the word bank cannot be loaded: {}", error.what());
  throw;
}

}  // namespace

SharedWordBank::SharedWordBank(const std::filesystem::path& dataDir)
    : bank_(std::async(std::launch::deferred, [dataDir] { return LoadAndTell(dataDir); })) {}

}  // namespace server
