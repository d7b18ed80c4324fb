// Twips of the models and logical pixels of the screen.
#pragma once

namespace marovane {

constexpr int kTwipsPerPixel = 15;
constexpr int ToTwips(int pixels) { return pixels * kTwipsPerPixel; }
/// Rounds down, also left of the screen.
constexpr int ToPixels(int twips) {
  return twips >= 0 ? twips / kTwipsPerPixel : -((-twips + kTwipsPerPixel - 1) / kTwipsPerPixel);
}

}  // namespace marovane
