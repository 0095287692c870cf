// SPDX-License-Identifier: MIT
#include "ui/sound/SetLabel.h"

#include <QEvent>

#include "ui/kit/HelpText.h"
#include "ui/kit/Labels.h"
#include "ui/kit/PathText.h"
#include "ui/kit/TopicOf.h"

namespace kestrin::ui::sound {

namespace {

constexpr const char* kMark = " \u2022";

}  // namespace

SetLabel::SetLabel(QWidget* parent) : QLabel(parent) {
  setObjectName("SetLabel");
  setTextFormat(Qt::PlainText);
  kit::SetTextStyle(*this, kit::TextStyle::Title);
  kit::SetHelpContext(*this, kit::HelpContext::UnsavedSet);
  // As wide as there is room: what a name needs must not move the window.
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void SetLabel::Show(const QString& name, bool isModified, const std::filesystem::path& path) {
  m_name = name;
  m_isModified = isModified;
  const QString whole = path.empty() ? name : kit::TextOf(path);
  setToolTip(isModified ? tr("%1\nNot saved yet").arg(whole) : whole);
  setAccessibleName(isModified ? tr("%1, not saved").arg(name) : name);
  Fit();
}

QSize SetLabel::minimumSizeHint() const { return {0, QLabel::minimumSizeHint().height()}; }

void SetLabel::resizeEvent(QResizeEvent* event) {
  QLabel::resizeEvent(event);
  Fit();
}

void SetLabel::changeEvent(QEvent* event) {
  QLabel::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) Fit();
}

void SetLabel::Fit() {
  const QString mark = m_isModified ? QString::fromUtf8(kMark) : QString();
  const int room = contentsRect().width() - fontMetrics().horizontalAdvance(mark);
  setText(fontMetrics().elidedText(m_name, Qt::ElideMiddle, room) + mark);
}

}  // namespace kestrin::ui::sound
