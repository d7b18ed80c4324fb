// Longer work that stands alone on the screen.
#pragma once

namespace marovane {

struct Program;
struct Progress;

/// Moves the main window off the screen and shows a progress box, until Finish or, after an error, the end of
/// its life puts things back.
class WorkOffScreen {
 public:
  WorkOffScreen(Program& program, const Progress& progress);
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

}  // namespace marovane
