#include "server/services/shared_engine.h"

#include <chrono>
#include <exception>

#include "server/services/log.h"

namespace server {

SharedEngine::SharedEngine(Load load)
    : judge_(std::async(std::launch::async,
                        [load = std::move(load)] { return LoadOrLog("check engine", load); })) {}

tolvex::Judgement SharedEngine::Ask(std::string_view sentence) const { return judge_.get()(sentence); }

bool SharedEngine::IsUsable() const try {
  if (judge_.wait_for(std::chrono::seconds(0)) == std::future_status::ready) judge_.get();
  return true;
} catch (const std::exception&) {
  return false;
}

SharedEngine::Load LoadTolvex(const std::filesystem::path& dataDir) {
  return [dataDir]() -> SharedEngine::Judge {
    auto engine = std::make_shared<const tolvex::Engine>(dataDir);
    engine->WaitUntilLoaded();  // a damaged dictionary is reported at the start
    return [engine](std::string_view sentence) { return engine->Judge(sentence); };
  };
}

}  // namespace server
