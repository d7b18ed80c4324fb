// The one check engine that all requests share. It loads while the server already listens.
#pragma once

#include <functional>
#include <future>
#include <string_view>

#include "engine/tolvex.h"

namespace server {

class SharedEngine {
 public:
  /// Judges a sentence; may be called from several threads at once.
  using Judge = std::function<tolvex::Judgement(std::string_view)>;
  /// Makes a judge. It may take its time, and may throw.
  using Load = std::function<Judge()>;

  /// Begins to load on a thread of its own. A failure is logged.
  explicit SharedEngine(Load load);

  /// Waits until the engine is loaded. Throws what the loading threw.
  tolvex::Judgement Ask(std::string_view sentence) const;

  /// False once the loading has failed.
  bool IsUsable() const;

 private:
  std::shared_future<Judge> judge_;
};

/// Loads the engine from its language data.
SharedEngine::Load LoadTolvex(const std::filesystem::path& dataDir);

}  // namespace server
