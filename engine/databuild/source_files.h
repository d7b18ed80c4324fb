// Reading the packaged sources.
#pragma once

#include <filesystem>
#include <functional>
#include <istream>
#include <string>
#include <string_view>
#include <vector>

namespace tolvex::databuild {

/// Calls `read` with each line of a source. Whatever it throws is thrown again as base::Error with the name
/// of the source, the number of the line, the reason and the line.
using LineReader = std::function<void(const std::string& line)>;
void ReadLines(std::istream& in, std::string_view source, const LineReader& read);

/// The same for a file; throws base::Error with the path when it cannot be read.
void ReadLines(const std::filesystem::path& path, const LineReader& read);

/// The words of a line. With a count, throws base::Error when there are more or less.
std::vector<std::string> SplitAtBlanks(const std::string& line);
std::vector<std::string> SplitAtBlanks(const std::string& line, std::size_t count);

/// The number that a field is, from 0 on. Throws base::Error when it is none.
std::size_t Number(std::string_view field, int radix = 10);

}  // namespace tolvex::databuild
