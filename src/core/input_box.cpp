#include "core/input_box.h"

#include "base/text.h"

namespace marovane {

void PutSentence(RichTextBox& txtInput, const std::string& sentence) {
  txtInput.Text = sentence;
  txtInput.SelStart = 0;
  txtInput.SelLength = base::Len(sentence);
  txtInput.SelFontName = kSentenceFont;
  txtInput.SelColor = kSentenceColor;
}

}  // namespace marovane
