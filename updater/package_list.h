// The list of the files of one version, as the owner of a server publishes it.
//
// Published: "ed25519 ", the signature in 128 hexadecimal digits, a line feed, the list
// List:      "marovane 1", a line feed, "version ", the version, a line feed, then a line for each file:
//            "-" or "x" (a program), a blank, its length in decimal, a blank, its SHA-256 in 64 hexadecimal
//            digits, a blank, its path
// The signature (RFC 8032) is over all bytes after its own line. A file's bytes are beside the list under
// "files/" and its SHA-256.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace updater {

struct ListedFile {
  std::string path;  ///< below the folder of the version, with "/"
  bool isProgram = false;
  std::uint64_t length = 0;  ///< bytes
  std::string sha256;        ///< 64 lower-case hexadecimal digits
};

struct PackageList {
  std::string version;
  std::vector<ListedFile> files;

  /// Bytes of all files.
  std::uint64_t Length() const;
};

/// True for digits and points only, so that it can name a folder.
bool IsVersion(std::string_view version);
/// True for a path that leads into bin/ or share/ and not out again.
bool IsSafePath(std::string_view path);

std::string WriteList(const PackageList& list);
/// Throws Refusal for a text that is no list, and for a list that no owner of a server would make.
PackageList ReadList(std::string_view text);

}  // namespace updater
