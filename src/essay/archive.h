// The archive of engine pages on the file server. A page is filed by the digests of the account number and of
// the sentence, so that it can be found again from the text alone.
#pragma once

#include <string>

namespace marovane {

struct Program;

/// Digest of a sentence without its blanks.
std::string ArchiveChecksum(const std::string& sentence);

/// Files a page (UTF-8) for a sentence and gives its checksum. A post that fails goes unnoticed: whoever asks
/// for the page later sees that there is none.
std::string SendServerHtm(Program& program, const std::string& page, const std::string& sentence);

/// Address that shows an archived page.
/// @param root of the server, ended by "/"
std::string ArchivedPageUrl(const Program& program, const std::string& root, const std::string& checksum);

}  // namespace marovane
