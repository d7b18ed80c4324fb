#include "core/installation.h"

#include "core/key_value_file.h"
#include "platform/environment.h"

namespace marovane {

namespace {

std::string AsRoot(std::string address) {
  if (!address.empty() && !address.ends_with('/')) address += '/';
  return address;
}

}  // namespace

InstallationValues ReadInstallation(base::Files& files, const Environment& environment) {
  const std::string path = environment.programFolder / "installation.set";
  const auto value = [&](const char* key) { return ReadWriteSetFile(files, path, "R", key, ""); };
  return {.serverRoot = AsRoot(value("serverRoot")),
          .campusServerRoot = AsRoot(value("campusServerRoot")),
          .updateHost = value("updateHost"),
          .webSiteRoot = AsRoot(value("webSiteRoot")),
          .oldDefaultDomain = value("oldDefaultDomain")};
}

}  // namespace marovane
