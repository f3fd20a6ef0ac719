// velk2d-cli page: the printed page of a 2D spectrum (comment, contour with axes and traces,
// parameter list, annotation objects) as a vector PDF or SVG, or a PNG at printer resolution.
#include <ctime>
#include <memory>

#include "cli/cli_io.h"
#include "cli/cli_prompt.h"
#include "cli/commands.h"
#include "cli/picture_input.h"
#include "core/text.h"
#include "layout/bracket_text.h"
#include "layout/page_store.h"
#include "layout/print_set.h"
#include "layout/render_page.h"
#include "platform/qt/picture_decode.h"
#include "platform/qt/picture_file.h"

namespace velk::cli {
namespace {

// Vector files count in 1/96 inch.
constexpr double kVectorDotsPerInch = 96;

struct PageOptions {
  std::string input, output, layoutFile, parameterFile, printSetFile, comment, paper = "A4", orientation = "portrait";
  double dpi = 300;
  bool commentGiven = false;
};

int Fail(const std::string& subject, const std::string& text, int status) { return Complain("page", subject, text, status); }

// The page's objects and frames: those of the layout file, else those stored with the data set.
std::unique_ptr<layout::EditedPage> PageObjects(const PageOptions& o, const document::Document& data,
                                                const layout::Paper& paper, int& status) {
  const model::Spectrum2D* holder = &data.spectrum;
  std::unique_ptr<document::Document> other;
  if (!o.layoutFile.empty()) {
    CliPrompt prompt;
    other = ReadInput("page", o.layoutFile, prompt, status);
    if (!other) return nullptr;
    holder = &other->spectrum;
  }
  return std::make_unique<layout::EditedPage>(layout::ReadStoredPage(holder->carried, paper));
}

int RunPage(const PageOptions& o) {
  const std::optional<layout::Paper> paper = layout::PaperOf(o.paper, o.orientation == "landscape");
  if (!paper) return Fail(o.paper, "the paper must be A4, A3, A5, B4 or B5", kFailed);
  if (!platform::qt::IsPictureExtension(o.output) || core::EndsWithNoCase(o.output, ".bmp"))
    return Fail(o.output, "the page must end in .pdf, .svg or .png", kFailed);
  if (!(o.dpi >= 36 && o.dpi <= 1200)) return Fail(o.output, "the resolution must lie between 36 and 1200 dots per inch", kFailed);

  layout::ParameterList parameters = layout::DefaultParameterList();
  if (!o.parameterFile.empty()) {
    const platform::Outcome read = layout::ReadParaFile(o.parameterFile, {}, parameters);
    if (!read.ok()) return Fail(o.parameterFile, read.message.text, kFailed);
  }
  core::Settings printSet = layout::DefaultPrintSet();
  if (!o.printSetFile.empty()) {
    const platform::Outcome read = layout::ReadPrintSet(o.printSetFile, printSet);
    if (!read.ok()) return Fail(o.printSetFile, read.message.text, kFailed);
  }
  int status = kDone;
  const auto data = ReadPictureInput("page", o.input, o.output, status);
  if (!data) return status;
  const auto page = PageObjects(o, *data, *paper, status);
  if (!page) return status;

  model::Spectrum2D& s = data->spectrum;
  const int pulseModeClass = data->words.pulseModeClass;
  display::ContourSetting setting;
  SetLevelLimits(s, pulseModeClass, setting, 0.1, 1.0);
  const std::optional<display::DisplayState> view = PictureView(s, {}, {});
  const display::MainViewInput input{s, pulseModeClass, setting, *view, display::TraceKind::Projection,
                                     AxisCaption("F2", s.extras[model::F2].nucleus),
                                     AxisCaption("F1", s.extras[model::F1].nucleus)};
  layout::ParameterSource source{.s = s};
  const std::time_t now = std::time(nullptr);
  localtime_r(&now, &source.printTime);
  if (data->companionF2.params.POINT > 0) source.f2TraceName = data->companionF2.texts.fileName;
  if (data->companionF1.params.POINT > 0) source.f1TraceName = data->companionF1.texts.fileName;
  const std::string comment = o.commentGiven ? layout::InternalFromBracket(o.comment) : s.comment;
  const layout::PictureDecoder pictures = platform::qt::DecodePicture;
  // Without the desktop's "Parameter Print" choice the parameter block takes the set's font.
  const layout::PageContent content{input,   parameters,         source, comment, page->objects, &page->frames,
                                    &pictures, &printSet, layout::PrintSetFont(printSet, "PARA")};

  const bool vector = !core::EndsWithNoCase(o.output, ".png");
  const double dpi = vector ? kVectorDotsPerInch : o.dpi;
  platform::NoProgress progress;
  const platform::Outcome written =
      platform::qt::WritePicture(o.output, layout::PageExtent(*paper, dpi), [&](platform::Surface& surface) {
        return layout::RenderPage(surface, content, *paper, dpi, progress);
      });
  if (written.code == 1) return Fail(o.input, "the spectrum holds less than one point on an axis", kRefused);
  if (!written.ok()) return Fail(o.output, written.message.text, kFailed);
  return kDone;
}

}  // namespace

void AddPageCommand(CLI::App& app, int& status) {
  auto* command = app.add_subcommand("page", "Draw the printed page of a 2D spectrum: comment, contour, traces, parameters");
  auto o = std::make_shared<PageOptions>();
  command->footer(kStatusHelp);
  command->add_option("IN", o->input, "a 2D spectrum in any format the program reads (a raw FID is transformed with the default recipe first)")->required();
  command->add_option("-o,--output", o->output, "the page: .pdf or .svg (vector), or .png")->required();
  command->add_option("--layout", o->layoutFile, "a Ver.4 file whose page objects to use (default: those of IN)");
  command->add_option("--parameters", o->parameterFile, "a parameter list (.prt) instead of the default list");
  command->add_option("--print-set", o->printSetFile, "a print set (.pr2) giving the page's colours, line widths and fonts");
  command->add_option("--comment", o->comment, "the comment, in the bracket notation: \\i(J)\\-(HH), \\g(d) ...")
      ->each([o](const std::string&) { o->commentGiven = true; });
  command->add_option("--paper", o->paper, "A4, A3, A5, B4 or B5")->capture_default_str();
  command->add_option("--orientation", o->orientation, "portrait or landscape")
      ->check(CLI::IsMember({"portrait", "landscape"}))
      ->capture_default_str();
  command->add_option("--dpi", o->dpi, "resolution of a PNG page")->capture_default_str();
  command->callback([o, &status] { status = RunPage(*o); });
}

}  // namespace velk::cli
