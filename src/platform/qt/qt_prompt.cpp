#include "platform/qt/qt_prompt.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QStringList>
#include <QThread>

namespace velk::platform::qt {
namespace {

// Runs f on the interface thread and returns its result; the calling worker waits for it.
template <class F>
auto OnInterfaceThread(F f) -> decltype(f()) {
  if (QThread::currentThread() == qApp->thread()) return f();
  decltype(f()) result{};
  QMetaObject::invokeMethod(qApp, [&] { result = f(); }, Qt::BlockingQueuedConnection);
  return result;
}

QMessageBox::Icon ToQt(Icon icon) {
  switch (icon) {
    case Icon::Information: return QMessageBox::Information;
    case Icon::Warning: return QMessageBox::Warning;
    case Icon::Critical: return QMessageBox::Critical;
    case Icon::Question: return QMessageBox::Question;
    case Icon::None: break;
  }
  return QMessageBox::NoIcon;
}

// The buttons of each set in the order the program shows them, with their answers.
std::vector<std::pair<QString, Answer>> ButtonsOf(Buttons buttons) {
  switch (buttons) {
    case Buttons::Ok: return {{"OK", Answer::Ok}};
    case Buttons::OkCancel: return {{"OK", Answer::Ok}, {"Cancel", Answer::Cancel}};
    case Buttons::YesNo: return {{"Yes", Answer::Yes}, {"No", Answer::No}};
    case Buttons::YesNoCancel: return {{"Yes", Answer::Yes}, {"No", Answer::No}, {"Cancel", Answer::Cancel}};
    case Buttons::RetryCancel: return {{"Retry", Answer::Retry}, {"Cancel", Answer::Cancel}};
    case Buttons::SaveDontSaveCancel:
      return {{"Do not Save", Answer::DontSave}, {"Save", Answer::Save}, {"Cancel", Answer::Cancel}};
  }
  return {{"OK", Answer::Ok}};
}

QString Patterns(const std::string& pattern) {
  // Bruker and Varian files are named, not extended: a bare name matches itself.
  QStringList out;
  for (const QString& p : QString::fromStdString(pattern).split(';', Qt::SkipEmptyParts)) out << p.trimmed();
  return out.join(' ');
}

}  // namespace

QString FilterText(const std::vector<FileFilter>& filters) {
  QStringList out;
  for (const FileFilter& f : filters) out << QString::fromStdString(f.label) + " (" + Patterns(f.pattern) + ")";
  return out.join(";;");
}

Answer QtPrompt::Ask(const Message& message) {
  return OnInterfaceThread([&] {
    if (message.beep) QApplication::beep();
    QMessageBox box(ToQt(message.icon), QString::fromStdString(message.title), QString::fromStdString(message.text),
                    QMessageBox::NoButton, parent_);
    std::vector<std::pair<QPushButton*, Answer>> pressed;
    for (const auto& [text, answer] : ButtonsOf(message.buttons)) {
      const auto role = answer == Answer::Cancel ? QMessageBox::RejectRole : QMessageBox::AcceptRole;
      pressed.emplace_back(box.addButton(text, role), answer);
    }
    box.setDefaultButton(pressed.front().first);
    box.exec();
    for (const auto& [button, answer] : pressed)
      if (box.clickedButton() == button) return answer;
    return message.buttons == Buttons::Ok ? Answer::Ok : Answer::Cancel;
  });
}

std::optional<int> QtPrompt::Choose(const std::string& title, const std::vector<std::string>& choices) {
  return OnInterfaceThread([&]() -> std::optional<int> {
    QStringList items;
    for (const std::string& c : choices) items << QString::fromStdString(c);
    bool ok = false;
    const QString chosen =
        QInputDialog::getItem(parent_, QString::fromStdString(title), QString(), items, 0, false, &ok);
    if (!ok) return std::nullopt;
    const int index = static_cast<int>(items.indexOf(chosen));
    return index < 0 ? std::nullopt : std::optional<int>(index);
  });
}

std::optional<std::string> QtPrompt::ChooseFile(const std::string& title, const std::vector<FileFilter>& filters,
                                                bool forSaving) {
  return OnInterfaceThread([&]() -> std::optional<std::string> {
    const QString caption = QString::fromStdString(title);
    const QString filter = FilterText(filters);
    const QString name = forSaving ? QFileDialog::getSaveFileName(parent_, caption, folder_, filter)
                                   : QFileDialog::getOpenFileName(parent_, caption, folder_, filter);
    if (name.isEmpty()) return std::nullopt;
    folder_ = QFileInfo(name).absolutePath();
    return name.toStdString();
  });
}

}  // namespace velk::platform::qt
