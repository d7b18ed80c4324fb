// Longer work that stands alone on the screen.
#pragma once

#include <string>

struct Program;

/// Moves the main window off the screen and shows a progress box, until Finish or, after an error, the end of
/// its life puts things back.
class WorkOffScreen {
 public:
  /// @param msgId number of the progress text
  WorkOffScreen(Program& program, const std::string& msgId);
  ~WorkOffScreen();
  WorkOffScreen(const WorkOffScreen&) = delete;
  WorkOffScreen& operator=(const WorkOffScreen&) = delete;

  void Finish();

 private:
  void PutMainBack();

  Program& program_;
  int left_ = 0;
  bool isFinished_ = false;
};
