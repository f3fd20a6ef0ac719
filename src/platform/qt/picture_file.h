#pragma once
// Pictures drawn through the surface into files: PNG and BMP images, SVG and PDF vector files.
#include <filesystem>
#include <functional>

#include "platform/message.h"
#include "platform/surface.h"

namespace velk::platform::qt {

// Qt's drawing needs a GUI application object; without a display it runs on the offscreen
// platform. Creates one (once) if the process has none.
void EnsureGuiApplication();

// The file kinds by extension (case ignored): ".png", ".bmp", ".svg", ".pdf".
bool IsPictureExtension(const std::filesystem::path& file);

// Draws a picture of the given size in device units (pixels; 1/96 inch in SVG and PDF) on a white
// ground and writes it atomically. When the drawing returns false (nothing to show, or quit)
// nothing is written and the code is 1; a failed write is -1 with the reason. Qt's warnings while
// drawing come back as one line in the message text, also on success.
using Drawing = std::function<bool(Surface&)>;
Outcome WritePicture(const std::filesystem::path& file, Extent size, const Drawing& draw);

}  // namespace velk::platform::qt
