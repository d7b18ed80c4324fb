// What a test expects the program to say next.
#pragma once

#include <gmock/gmock.h>

#include <functional>
#include <string>

#include "core/message.h"
#include "tests/support/scripted_user.h"

namespace marovane {

using MessageButton = CommandButton FrmMessage::*;
inline constexpr MessageButton kOk = &FrmMessage::cmdOK;
inline constexpr MessageButton kCancel = &FrmMessage::cmdCancel;
inline constexpr MessageButton kYes = &FrmMessage::cmdYes;
inline constexpr MessageButton kNo = &FrmMessage::cmdNo;

/// Expects a message as the next modal window and answers it.
/// @param detail    is to be in the text as well
/// @param meanwhile comes before the answer
inline void ExpectMessage(ScriptedUser& user, const Message& message, MessageButton answer = kOk,
                          const std::string& detail = "", const std::function<void()>& meanwhile = {}) {
  user.OnModal([&user, &message, answer, detail, meanwhile](Form& form) {
    auto& box = dynamic_cast<FrmMessage&>(form);
    const std::string text(message.text);
    EXPECT_THAT(box.lblMessage.Caption(),
                ::testing::AllOf(::testing::HasSubstr(text), ::testing::HasSubstr(detail)));
    EXPECT_EQ(box.imgIcon.Picture(), "imgIcons_" + std::to_string(static_cast<int>(message.icon))) << text;
    EXPECT_EQ(box.cmdYes.Visible(), message.buttons == Message::Buttons::kYesNo) << text;
    EXPECT_EQ(box.cmdCancel.Visible(), message.buttons == Message::Buttons::kOkCancel) << text;
    if (meanwhile) meanwhile();
    user.Click(box.*answer);
  });
}

}  // namespace marovane
