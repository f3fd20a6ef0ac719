#pragma once
// What every command does with its input and its outputs: read through the document layer,
// refuse to write over an input, and turn outcomes into messages on stderr and exit statuses.
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "document/document.h"
#include "platform/message.h"
#include "platform/prompt.h"

namespace velk::cli {

// The exit statuses of every command.
inline constexpr int kDone = 0;
inline constexpr int kRefused = 1;     // the data or the options do not fit what was asked
inline constexpr int kFailed = 2;      // unreadable input, unwritable output, a bad option value
inline constexpr const char* kStatusHelp =
    "Exit status: 0 done; 1 the data were refused (not what the command takes, damaged, or the options do not fit "
    "them); 2 an input could not be read, an output could not be written, or an option value is wrong (nothing is "
    "written then, and no input is ever written over).";

// "velk2d-cli COMMAND: SUBJECT: text" on stderr; returns the status.
int Complain(std::string_view command, const std::string& subject, const std::string& text, int status);
// The status of a reader's or writer's outcome: 0, 1 refused, 2 for everything else.
int StatusOf(const platform::Outcome& outcome);
std::string TextOf(const platform::Message& message);

// Reads any data set the program reads; null after a complaint, with the status set.
std::unique_ptr<document::Document> ReadInput(std::string_view command, const std::string& path,
                                              platform::Prompt& prompt, int& status);
// 0, or the complaint's status when the output would land on the input or inside its data set.
int CheckOutput(std::string_view command, const std::filesystem::path& output, const document::Document& input);

}  // namespace velk::cli
