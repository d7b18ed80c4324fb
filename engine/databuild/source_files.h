// Reading the packaged sources.
#pragma once

#include <array>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "engine/lexicon/lexicon.h"

namespace tolvex::databuild {

/// The endings of WordNet's files, in the order of the bits of Part.
inline constexpr std::array<std::string_view, kPartCount> kWordNetParts = {"noun", "verb", "adj", "adv"};

/// Throws std::runtime_error with the path when the file cannot be read.
std::ifstream Open(const std::filesystem::path& path);

std::vector<std::string> SplitAtBlanks(const std::string& line);

}  // namespace tolvex::databuild
