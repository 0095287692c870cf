#include "ui/window/HelpLine.h"

#include <QAccessible>
#include <QEvent>
#include <QMouseEvent>
#include <algorithm>
#include <array>
#include <utility>

#include "ui/kit/Theme.h"

namespace kestrin::ui::window {

namespace {

struct HoverText {
  const char* control;
  const char* text;
};

constexpr std::array<HoverText, 16> kHoverTexts{{
    {"LoadBtn", "LOAD Configuration File"},
    {"SaveBtn", "SAVE Configuration File"},
    {"ConfigBtn", "CONFIGURE Hardware"},
    {"SendBtn", "DOWNLOAD Sound Files to Kestrin"},
    {"UpdateBtn", "UPDATE Sound Files (Requires Internet)"},
    {"btnUpdateLED", "Update LED Configuration"},
    {"btnSendFoc", "Apply and Test"},
    {"btnSendPulse", "Apply and Test"},
    {"Main", HelpLine::kPressF1},
    {"Frame1", HelpLine::kPressF1},
    {"FrameFoc", HelpLine::kPressF1},
    {"frmLED", HelpLine::kPressF1},
    {"HelpLabel", HelpLine::kPressF1},
    {"labelLED1", HelpLine::kPressF1},
    {"OnlinePicture", HelpLine::kPressF1},
    {"PickColor_frame", HelpLine::kPressF1},
}};

}  // namespace

HelpLine::HelpLine(QWidget* parent) : QLabel(kPressF1, parent) {
  setObjectName("HelpLabel");
  setTextFormat(Qt::PlainText);
  // A long text must not widen the window.
  setWordWrap(true);
  kit::Theme::MakeSoft(*this);
  m_newsTimer.setSingleShot(true);
  m_newsTimer.setInterval(kNewsMilliseconds);
  connect(&m_newsTimer, &QTimer::timeout, this, [this] {
    m_news.clear();
    Show();
  });
}

void HelpLine::Explain(QWidget& root) {
  QList<QWidget*> controls = root.findChildren<QWidget*>();
  controls.append(&root);
  for (QWidget* const control : controls) {
    const auto* const row = std::find_if(kHoverTexts.begin(), kHoverTexts.end(), [&](const HoverText& text) {
      return control->objectName() == QLatin1String(text.control);
    });
    if (row == kHoverTexts.end()) continue;
    Watch(*control, row->text);
  }
}

void HelpLine::Watch(QWidget& control, const QString& text) {
  m_texts[&control] = text;
  control.installEventFilter(this);
  // The pointer comes onto the ground out of the controls that stand on it, without entering it.
  if (text == kPressF1) control.setMouseTracking(true);
  if (&control == this) return;
  connect(&control, &QObject::destroyed, this, [this, gone = &control] { m_texts.remove(gone); });
}

void HelpLine::ShowHint(const QString& hint) {
  m_hint = hint;
  // A control that the pointer or the keyboard comes back to, when the question that it had asked is gone, has nothing
  // new to say: the news are about what it has done.
  if (!hint.isEmpty() && std::exchange(m_lastHint, hint) != hint) m_news.clear();
  Show();
}

void HelpLine::ShowNews(const QString& news) {
  m_news = news;
  m_newsTimer.start();
  Show();
  QAccessibleEvent alert(this, QAccessible::Alert);
  QAccessible::updateAccessibility(&alert);
}

bool HelpLine::IsOnGround(QObject* watched, const QPoint& place) const {
  // What stands on the ground passes on the moves that it has no use for. Whoever points at the news reads them.
  const auto* const control = qobject_cast<const QWidget*>(watched);
  return m_texts.value(watched) == kPressF1 && control != this && control != nullptr &&
         control->childAt(place) == nullptr;
}

bool HelpLine::eventFilter(QObject* watched, QEvent* event) {
  const QString text = m_texts.value(watched);
  switch (event->type()) {
    case QEvent::MouseMove:
    case QEvent::Enter: {
      // A window that comes up under the pointer is entered too: only who moves has read the news.
      const auto& pointer = *static_cast<QSinglePointEvent*>(event);
      const bool hasMoved = std::exchange(m_pointer, pointer.globalPosition()) != pointer.globalPosition();
      if (event->type() == QEvent::MouseMove && hasMoved && IsOnGround(watched, pointer.position().toPoint()))
        m_news.clear();
      [[fallthrough]];
    }
    case QEvent::FocusIn:
      ShowHint(text == kPressF1 ? QString() : text);
      break;
    case QEvent::Leave:
    case QEvent::FocusOut:
      ShowHint({});
      break;
    default:
      break;
  }
  return QLabel::eventFilter(watched, event);
}

void HelpLine::Show() {
  const QString text = !m_news.isEmpty() ? m_news : !m_hint.isEmpty() ? m_hint : QString(kPressF1);
  setText(text);
  setToolTip(text == kPressF1 ? QString() : text);
}

}  // namespace kestrin::ui::window
