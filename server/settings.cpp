#include "server/settings.h"

#include "server/key_values.h"

namespace marovane {

ServerSettings ReadServerSettings(const std::filesystem::path& file) {
  const KeyValues values = KeyValues::Read(file);
  const auto valueOr = [&](const char* key, const char* otherwise) {
    const std::string value = values.Get(key);
    return value.empty() ? otherwise : value;
  };
  return {valueOr("engineRoot", ""), valueOr("versionMrv", MAROVANE_VERSION),
          valueOr("versionBig", MAROVANE_VERSION), valueOr("newsPage", "")};
}

}  // namespace marovane
