#include "gui/page_menu.h"

#include <QMenu>
#include <ctime>

#include "layout/layout_sections.h"
#include "platform/qt/qt_prompt.h"

namespace velk::gui {

ShownPage::ShownPage(const document::Session& session, const ViewData& data) : parameters(layout::DefaultParameterList()) {
  const document::Document& d = session.document;
  view = std::make_unique<display::MainViewInput>(display::MainViewInput{
      *data.spectrum, data.pulseModeClass, data.setting, data.state, display::TraceKind::Projection, data.captionF2,
      data.captionF1});
  source = std::make_unique<layout::ParameterSource>(layout::ParameterSource{.s = *data.spectrum});
  const std::time_t now = std::time(nullptr);
  localtime_r(&now, &source->printTime);
  if (d.companionF2.params.POINT > 0) source->f2TraceName = d.companionF2.texts.fileName;
  if (d.companionF1.params.POINT > 0) source->f1TraceName = d.companionF1.texts.fileName;
  objects = layout::ReadLayoutSections(data.spectrum->carried.fileSections, layout::LayoutPage::Page2D);
  content = std::make_unique<layout::PageContent>(
      layout::PageContent{*view, parameters, *source, data.spectrum->comment, objects});
  peakList = operations::PrintListRows(*data.spectrum, d.source.path.filename().string(), {});
}

void AddPageOutputActions(QMenu& menu, QWidget* window, document::Session& session, const ViewData& data) {
  const auto withPage = [window, &session, &data](auto action) {
    return [window, &session, &data, action] {
      if (!data.spectrum) return;
      const ShownPage page(session, data);
      layout::PrintSetup setup = layout::PrintSetupFromSettings(session.settings2D);
      platform::qt::QtPrompt prompt(window);
      action(page, setup, prompt);
      layout::StorePrintSetup(setup, session.settings2D);
    };
  };
  const auto print = [window, &session](bool ask) {
    return [window, &session, ask](const ShownPage& page, layout::PrintSetup& setup, platform::Prompt& prompt) {
      PrintPage(window, {*page.content, page.peakList, session.document.source.path.filename().string()}, setup, prompt, ask);
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
    save->addAction(text, window, withPage([window, format](const ShownPage& page, layout::PrintSetup& setup, platform::Prompt& prompt) {
      SaveScreen(window, format, *page.content, layout::PageAreaOf(setup.page), prompt);
    }));
  }
}

}  // namespace velk::gui
