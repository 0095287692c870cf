// SPDX-License-Identifier: MIT
#include "ui/kit/Theme.h"

#include <QAbstractButton>
#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QMetaObject>
#include <QStyleHints>
#include <QToolTip>
#include <utility>

#include "ui/kit/ThemeColors.h"
#include "ui/kit/ThemeStyle.h"

namespace kestrin::ui::kit {
namespace {

constexpr const char* kPrimaryProperty = "kestrinPrimary";

/// Where the desktop tells its accent colour.
#if QT_VERSION >= QT_VERSION_CHECK(6, 6, 0)
constexpr QPalette::ColorRole kAccentRole = QPalette::Accent;
#else
constexpr QPalette::ColorRole kAccentRole = QPalette::Highlight;
#endif

/// While the application has a palette of its own, Qt hides the desktop's: it is asked without one.
QPalette DesktopPalette() {
  QApplication::setPalette(QPalette());
  return QApplication::palette();
}

}  // namespace

void Theme::Apply(QApplication& application, ColorScheme scheme) { Apply(application, scheme, DesktopPalette); }

void Theme::Apply(QApplication& application, ColorScheme scheme, SystemPalette system) {
  Theme* theme = Of(application);
  if (theme == nullptr) theme = new Theme(application);
  theme->m_scheme = scheme;
  theme->m_system = std::move(system);
  theme->Refresh();
}

void Theme::Choose(QApplication& application, ColorScheme scheme) {
  Theme* const theme = Of(application);
  if (theme == nullptr) return Apply(application, scheme);
  theme->m_scheme = scheme;
  theme->Refresh();
}

Theme* Theme::Of(const QApplication& application) {
  return application.findChild<Theme*>(QString(), Qt::FindDirectChildrenOnly);
}

Theme::Theme(QApplication& application) : QObject(&application), m_application(application) {
  QApplication::setStyle(new ThemeStyle);
  m_application.installEventFilter(this);
#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
  // Not every desktop tells the windows as well.
  connect(QGuiApplication::styleHints(), &QStyleHints::colorSchemeChanged, this, &Theme::RefreshSoon);
#endif
}

void Theme::MakePrimary(QAbstractButton& button) {
  button.setProperty(kPrimaryProperty, true);
  button.update();
}

bool Theme::IsPrimary(const QObject* button) {
  return button != nullptr && button->property(kPrimaryProperty).toBool();
}

bool Theme::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::ThemeChange) RefreshSoon();
  return QObject::eventFilter(watched, event);
}

void Theme::RefreshSoon() {
  // Every window is told of a change of the desktop's look: one answer, once all of them know.
  if (std::exchange(m_isRefreshDue, true)) return;
  QMetaObject::invokeMethod(this, &Theme::Refresh, Qt::QueuedConnection);
}

void Theme::Refresh() {
  m_isRefreshDue = false;
  const QPalette desktop = m_system();
  const bool isDark = m_scheme == ColorScheme::System ? IsDark(desktop) : m_scheme == ColorScheme::Dark;
  const QPalette palette = PaletteOf({isDark, IsHighContrast(desktop), desktop.color(QPalette::Active, kAccentRole)});
  QApplication::setPalette(palette);
  QToolTip::setPalette(palette);
}

}  // namespace kestrin::ui::kit
