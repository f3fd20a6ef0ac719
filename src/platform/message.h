#pragma once
// A message shown to the user: title, text, a fixed button set and an icon, in the program's words.
#include <string>

namespace velk::platform {

enum class Buttons { Ok, OkCancel, YesNo, YesNoCancel, RetryCancel, SaveDontSaveCancel };
enum class Icon { None, Information, Warning, Critical, Question };
enum class Answer { Ok, Cancel, Yes, No, Retry, Save, DontSave };

struct Message {
  std::string title;
  std::string text;
  Buttons buttons = Buttons::Ok;
  Icon icon = Icon::None;
  bool beep = false;

  bool empty() const { return title.empty() && text.empty(); }
};

// What a routine returns when it also has something to tell the user.
struct Outcome {
  int code = 0;  // 0 success; readers 1 for data refused, -1 for I/O failure or wrong format
  Message message;

  bool ok() const { return code == 0; }
};

}  // namespace velk::platform
