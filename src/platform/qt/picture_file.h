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
// ground and writes it. The file is written under a temporary name and renamed when complete.
Outcome WritePicture(const std::filesystem::path& file, Extent size, const std::function<void(Surface&)>& draw);

}  // namespace velk::platform::qt
