// SPDX-License-Identifier: MIT
#include "ui/window/WindowPlace.h"

#include <QScreen>
#include <QSettings>
#include <QWidget>
#include <algorithm>

namespace kestrin::ui::window {

namespace {

constexpr const char* kGeometryKey = "windowGeometry";
/// What the desktop draws around a window, title bar included. Its own figures are known only once the window is there.
constexpr QMargins kFrame{4, 36, 4, 4};

}  // namespace

WindowPlace::WindowPlace(QWidget& window, QSettings& settings) : m_window(window), m_settings(settings) {}

void WindowPlace::Restore() const {
  const bool restored = m_window.restoreGeometry(m_settings.value(kGeometryKey).toByteArray());
  const QRect room = m_window.screen()->availableGeometry() - kFrame;
  if (!restored) return m_window.resize(kFirstSize.boundedTo(room.size()));
  // One that fills its screen is fitted by the desktop.
  if ((m_window.windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen)) != 0) return;
  const QRect fitting = Within(m_window.geometry(), room);
  if (fitting != m_window.geometry()) m_window.setGeometry(fitting);
}

void WindowPlace::Keep() const { m_settings.setValue(kGeometryKey, m_window.saveGeometry()); }

QRect WindowPlace::Within(const QRect& wanted, const QRect& room) {
  QRect place(wanted.topLeft(), wanted.size().boundedTo(room.size()));
  place.moveLeft(std::clamp(place.left(), room.left(), room.left() + room.width() - place.width()));
  place.moveTop(std::clamp(place.top(), room.top(), room.top() + room.height() - place.height()));
  return place;
}

}  // namespace kestrin::ui::window
