#include "gui/page_menu.h"

#include <QMenu>
#include <ctime>

#include "gui/parameter_print_dialog.h"
#include "layout/page_store.h"
#include "platform/qt/picture_decode.h"
#include "platform/qt/qt_prompt.h"

namespace velk::gui {

layout::ParameterSource PageSource(const document::Document& document) {
  layout::ParameterSource source{.s = document.spectrum};
  const std::time_t now = std::time(nullptr);
  localtime_r(&now, &source.printTime);
  if (document.companionF2.params.POINT > 0) source.f2TraceName = document.companionF2.texts.fileName;
  if (document.companionF1.params.POINT > 0) source.f1TraceName = document.companionF1.texts.fileName;
  return source;
}

ShownPage::ShownPage(const document::Session& session, const SpectrumView& shown, const layout::Paper& paper,
                     layout::PrintedParameters printed)
    : view(layout::PageViewOf(shown.Input(), session.settings2D)),
      parameters(std::move(printed)),
      source(PageSource(session.document)),
      page(layout::ReadStoredPage(session.document.spectrum.carried, paper)),
      pictures(platform::qt::DecodePicture),
      content{view,         parameters.list, source, session.document.spectrum.comment, page.objects, &page.frames,
              &pictures,    &session.printSet, parameters.choice.font, parameters.choice.decimalColumn},
      peakList(operations::PrintListRows(session.document.spectrum, session.document.source.path.filename().string(), {})) {
}

void AddPageOutputActions(QMenu& menu, QWidget* window, document::Session& session, const SpectrumView& view) {
  const auto withPage = [window, &session, &view](auto action) {
    return [window, &session, &view, action] {
      if (!view.Shown()) return;
      layout::PrintSetup setup = layout::PrintSetupFromSettings(session.settings2D);
      platform::qt::QtPrompt prompt(window);
      const ShownPage page(session, view, layout::PageAreaOf(setup.page), SessionParameters(session, prompt));
      action(page, setup, prompt);
      layout::StorePrintSetup(setup, session.settings2D);
    };
  };
  const auto print = [window, &session](bool ask) {
    return [window, &session, ask](const ShownPage& page, layout::PrintSetup& setup, platform::Prompt& prompt) {
      PrintPage(window, {page.content, page.peakList, session.document.source.path.filename().string()}, setup, prompt, ask);
    };
  };
  menu.addAction("Print...", window, withPage(print(true)));
  menu.addAction("Present Paper", window, withPage(print(false)));
  menu.addAction("Printer Setting...", window, [window, &session] {
    layout::PrintSetup setup = layout::PrintSetupFromSettings(session.settings2D);
    if (OpenPrinterSetting(window, setup)) layout::StorePrintSetup(setup, session.settings2D);
  });
  QMenu* save = menu.addMenu("Save Screen");
  for (const auto& [text, format] : {std::pair{"Save Screen as PNG...", ScreenFormat::Png},
                                     std::pair{"Save Screen as BMP...", ScreenFormat::Bmp},
                                     std::pair{"Save Screen as EMF...", ScreenFormat::Emf},
                                     std::pair{"Save Screen as PDF...", ScreenFormat::Pdf},
                                     std::pair{"Save Screen as SVG...", ScreenFormat::Svg}}) {
    save->addAction(text, window, withPage([window, format](const ShownPage& page, layout::PrintSetup&, platform::Prompt& prompt) {
      SaveScreen(window, format, page.content, page.page.paper, prompt);
    }));
  }
}

}  // namespace velk::gui
