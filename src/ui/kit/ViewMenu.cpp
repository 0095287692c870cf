// SPDX-License-Identifier: MIT
#include "ui/kit/ViewMenu.h"

#include <QActionGroup>
#include <QApplication>
#include <QSettings>
#include <algorithm>
#include <array>

namespace kestrin::ui::kit {

namespace {

constexpr const char* kSchemeKey = "colorScheme";

struct View {
  ColorScheme scheme;
  /// In the settings.
  const char* word;
  const char* caption;
  const char* purpose;
};

constexpr std::array<View, 3> kViews{{
    {ColorScheme::System, "system", QT_TRANSLATE_NOOP("kestrin::ui::kit::ViewMenu", "&System"),
     QT_TRANSLATE_NOOP("kestrin::ui::kit::ViewMenu", "The colors of the desktop, also when they change")},
    {ColorScheme::Light, "light", QT_TRANSLATE_NOOP("kestrin::ui::kit::ViewMenu", "&Light"),
     QT_TRANSLATE_NOOP("kestrin::ui::kit::ViewMenu", "Dark text on a light ground")},
    {ColorScheme::Dark, "dark", QT_TRANSLATE_NOOP("kestrin::ui::kit::ViewMenu", "&Dark"),
     QT_TRANSLATE_NOOP("kestrin::ui::kit::ViewMenu", "Light text on a dark ground")},
}};

}  // namespace

ViewMenu::ViewMenu(QSettings& settings, QWidget* parent) : QMenu(parent) {
  setObjectName("ViewMenu");
  setToolTipsVisible(true);
  auto* const one = new QActionGroup(this);
  for (const View& view : kViews) {
    QAction* const action = addAction(tr(view.caption));
    action->setToolTip(tr(view.purpose));
    action->setCheckable(true);
    action->setChecked(view.scheme == Chosen(settings));
    one->addAction(action);
    connect(action, &QAction::triggered, this, [this, &settings, scheme = view.scheme] { Choose(settings, scheme); });
  }
}

ColorScheme ViewMenu::Chosen(const QSettings& settings) {
  const QString word = settings.value(kSchemeKey).toString();
  const auto* const view = std::find_if(kViews.begin(), kViews.end(),
                                        [&word](const View& each) { return word == QLatin1String(each.word); });
  return view == kViews.end() ? ColorScheme::System : view->scheme;
}

void ViewMenu::Choose(QSettings& settings, ColorScheme scheme) const {
  for (const View& view : kViews)
    if (view.scheme == scheme) settings.setValue(kSchemeKey, view.word);
  Theme::Choose(*qApp, scheme);
}

}  // namespace kestrin::ui::kit
