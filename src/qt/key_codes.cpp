#include "qt/key_codes.h"

#include <QKeyEvent>
#include <map>

namespace marovane {

namespace {

const std::map<int, int>& Codes() {
  static const std::map<int, int> codes{
      {Qt::Key_Backspace, 8},    {Qt::Key_Tab, 9},           {Qt::Key_Return, 13},
      {Qt::Key_Enter, 13},       {Qt::Key_Shift, 16},        {Qt::Key_Control, 17},
      {Qt::Key_Alt, 18},         {Qt::Key_Escape, 27},       {Qt::Key_Space, 32},
      {Qt::Key_PageUp, 33},      {Qt::Key_PageDown, 34},     {Qt::Key_End, 35},
      {Qt::Key_Home, 36},        {Qt::Key_Left, 37},         {Qt::Key_Up, 38},
      {Qt::Key_Right, 39},       {Qt::Key_Down, 40},         {Qt::Key_Insert, 45},
      {Qt::Key_Delete, 46},      {Qt::Key_ParenRight, '0'},  {Qt::Key_Exclam, '1'},
      {Qt::Key_At, '2'},         {Qt::Key_NumberSign, '3'},  {Qt::Key_Dollar, '4'},
      {Qt::Key_Percent, '5'},    {Qt::Key_AsciiCircum, '6'}, {Qt::Key_Ampersand, '7'},
      {Qt::Key_Asterisk, '8'},   {Qt::Key_ParenLeft, '9'},   {Qt::Key_Semicolon, 186},
      {Qt::Key_Colon, 186},      {Qt::Key_Equal, 187},       {Qt::Key_Plus, 187},
      {Qt::Key_Comma, 188},      {Qt::Key_Less, 188},        {Qt::Key_Minus, 189},
      {Qt::Key_Underscore, 189}, {Qt::Key_Period, 190},      {Qt::Key_Greater, 190},
      {Qt::Key_Slash, 191},      {Qt::Key_Question, 191},    {Qt::Key_QuoteLeft, 192},
      {Qt::Key_AsciiTilde, 192}, {Qt::Key_BracketLeft, 219}, {Qt::Key_BraceLeft, 219},
      {Qt::Key_Backslash, 220},  {Qt::Key_Bar, 220},         {Qt::Key_BracketRight, 221},
      {Qt::Key_BraceRight, 221}, {Qt::Key_Apostrophe, 222},  {Qt::Key_QuoteDbl, 222},
  };
  return codes;
}

}  // namespace

int KeyCodeOf(const QKeyEvent& event) {
  const int key = event.key();
  if ((key >= Qt::Key_0 && key <= Qt::Key_9) || (key >= Qt::Key_A && key <= Qt::Key_Z)) return key;
  if (key >= Qt::Key_F1 && key <= Qt::Key_F12) return 112 + key - Qt::Key_F1;
  const auto found = Codes().find(key);
  return found == Codes().end() ? 0 : found->second;
}

}  // namespace marovane
