#include "ui/kit/Theme.h"

#include <QAbstractButton>
#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QMetaObject>
#include <QToolTip>
#include <utility>

#include "ui/kit/ThemeColors.h"
#include "ui/kit/ThemeStyle.h"

namespace kestrin::ui::kit {
namespace {

constexpr const char* kPrimaryProperty = "kestrinPrimary";

/// While the application has a palette of its own, Qt hides the desktop's: it is asked without one.
QPalette DesktopPalette() {
  QApplication::setPalette(QPalette());
  return QApplication::palette();
}

}  // namespace

void Theme::Apply(QApplication& application, ColorScheme scheme) { Apply(application, scheme, DesktopPalette); }

void Theme::Apply(QApplication& application, ColorScheme scheme, SystemPalette system) {
  auto* theme = application.findChild<Theme*>(QString(), Qt::FindDirectChildrenOnly);
  if (theme == nullptr) theme = new Theme(application);
  theme->m_scheme = scheme;
  theme->m_system = std::move(system);
  theme->Refresh();
}

Theme::Theme(QApplication& application) : QObject(&application), m_application(application) {
  QApplication::setStyle(new ThemeStyle);
  m_application.installEventFilter(this);
}

void Theme::MakePrimary(QAbstractButton& button) {
  button.setProperty(kPrimaryProperty, true);
  button.update();
}

bool Theme::IsPrimary(const QObject* button) {
  return button != nullptr && button->property(kPrimaryProperty).toBool();
}

void Theme::MakeSoft(QLabel& label) { label.setForegroundRole(QPalette::PlaceholderText); }

bool Theme::eventFilter(QObject* watched, QEvent* event) {
  // Every window is told of a change of the desktop's look: one answer, once all of them know.
  if (event->type() == QEvent::ThemeChange && m_scheme == ColorScheme::System && !m_isRefreshDue) {
    m_isRefreshDue = true;
    QMetaObject::invokeMethod(this, &Theme::Refresh, Qt::QueuedConnection);
  }
  return QObject::eventFilter(watched, event);
}

void Theme::Refresh() {
  m_isRefreshDue = false;
  const bool dark = m_scheme == ColorScheme::Dark || (m_scheme == ColorScheme::System && IsDark(m_system()));
  const QPalette palette = PaletteOf(dark);
  QApplication::setPalette(palette);
  QToolTip::setPalette(palette);
}

}  // namespace kestrin::ui::kit
