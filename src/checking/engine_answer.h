// What an engine has answered about a sentence.
#pragma once

#include <string>

struct EngineAnswer {
  std::string findMistake;  ///< "0" right, "1" errors, "2" points to watch; another word is no verdict
  std::string errcode;      ///< cleaned, at most six characters
  std::string sentence;     ///< when something was found: the sentence with its faulty parts marked
  std::string pagePath;     ///< result page: a file (local), or relative to the engine's root (web)
  std::string colSuggestion;
  std::string synSuggestion;

  bool IsRight() const { return findMistake == "0"; }
};
