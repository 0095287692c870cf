// SPDX-License-Identifier: MIT
#include "ui/update/updateForm.h"

#include <QAccessible>
#include <QCoreApplication>
#include <QEvent>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>
#include <utility>

#include "ui/kit/Card.h"
#include "ui/kit/Grid.h"
#include "ui/kit/Labels.h"
#include "ui/kit/MessageIcon.h"
#include "ui/kit/Theme.h"
#include "ui/kit/ThemeColors.h"
#include "ui/kit/TopicOf.h"
#include "ui/kit/Translated.h"
#include "ui/kit/WrapLabel.h"
#include "ui/update/ProgressShape.h"

namespace kestrin::ui::update {

namespace {

using kit::kGrid;
constexpr int kWidth = 480;
constexpr int kIconSide = 40;
constexpr int kButtonWidth = 96;
constexpr int kButtonHeight = 32;

/// The groove of a bar.
class Groove : public QFrame {
  static constexpr int kThickness = 8;

 public:
  explicit Groove(QWidget* parent) : QFrame(parent) {
    setFixedHeight(kThickness);
    setAutoFillBackground(false);
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(kit::ColorOf(kit::ColorRole::Line, palette()));
    painter.drawRoundedRect(rect(), height() / 2.0, height() / 2.0);
  }
};

QLabel* MakeIcon(const char* name, const QString& accessibleName, QWidget* parent) {
  auto* const icon = new QLabel(parent);
  icon->setObjectName(name);
  icon->setAccessibleName(accessibleName);
  icon->setFixedSize(kIconSide, kIconSide);
  return icon;
}

}  // namespace

void updateForm::Bar::SetVisible(bool visible) const {
  background->setVisible(visible);
  shape->setVisible(visible);
}

void updateForm::Button::Show(const QString& text) const {
  caption->setText(text);
  background->setAccessibleName(text);
  background->show();
  caption->show();
}

void updateForm::Button::Hide() const {
  background->hide();
  caption->hide();
}

updateForm::updateForm(core::update::TransferControl& inetConnector, QWidget* parent)
    : QDialog(parent), m_inetConnector(inetConnector) {
  setObjectName("updateForm");
  setWindowTitle(tr("Update"));
  setAccessibleName(tr("Update of sound fonts"));
  setModal(true);
  kit::SetHelpContext(*this, kit::HelpContext::UpdateForm);
  MakeControls();
  MakeLayout();
  updateForm::resetForm();
  m_title->setText(tr("Updating items..."));
}

void updateForm::Fit() {
  if (std::exchange(m_fitted, true)) return;
  ShowColors();
  // The dialog has one width for all its life.
  setFixedWidth(kWidth);
  const int height =
      layout()->hasHeightForWidth() ? layout()->totalHeightForWidth(kWidth) : layout()->totalSizeHint().height();
  setMinimumHeight(height);
  resize(kWidth, height);
  for (QLayout* const inside : {layout(), m_border->layout()}) inside->activate();
  for (const Bar& bar : {m_bar1, m_bar2}) bar.shape->SetFullWidth(static_cast<std::int16_t>(bar.background->width()));
}

void updateForm::MakeControls() {
  m_border = new kit::Card(this);
  m_border->setObjectName("formBorder");
  m_title = kit::MakeLabel("formTitle", kit::TextStyle::Headline, "", m_border);
  m_step = new kit::WrapLabel(m_border);
  m_step->setObjectName("updateStep");
  kit::SetTextStyle(*m_step, kit::TextStyle::Soft);
  m_element = new kit::WrapLabel(m_border);
  m_element->setObjectName("updateElement");
  // Long names may take a second line without moving what is below.
  m_element->setMinimumHeight(2 * m_element->fontMetrics().lineSpacing());
  m_okIcon = MakeIcon("okIcon", tr("Success"), m_border);
  m_warningIcon = MakeIcon("warningIcon", tr("Warning"), m_border);
  m_bar1 = MakeBar(1, tr("Whole update"));
  m_bar2 = MakeBar(2, tr("Current item"));
  m_hint = new kit::WrapLabel(m_border);
  m_hint->setObjectName("closeHint");
  m_hint->setText(tr("Close this window or press Esc to cancel; what has arrived is kept."));
  kit::SetTextStyle(*m_hint, kit::TextStyle::Soft);
  m_button1 = MakeButton(1);
  m_button2 = MakeButton(2);
  kit::Theme::MakePrimary(*m_button2.background);
  m_button2.background->setDefault(true);
  // Not quit(), which asks every window first: one that is busy would not let the program end.
  connect(m_button1.background, &QPushButton::clicked, qApp, [] { QCoreApplication::exit(0); });
  connect(m_button2.background, &QPushButton::clicked, this, &QDialog::reject);
}

void updateForm::MakeLayout() {
  auto* const lines = new QVBoxLayout;
  lines->setSpacing(kit::kHalf);
  lines->addWidget(m_title);
  lines->addWidget(m_step);
  lines->addWidget(m_element);
  auto* const report = new QHBoxLayout;
  report->setSpacing(kit::kWide);
  for (QLabel* const icon : {m_okIcon, m_warningIcon}) report->addWidget(icon, 0, Qt::AlignTop);
  report->addLayout(lines, 1);
  auto* const buttons = new QHBoxLayout;
  buttons->setSpacing(kGrid);
  buttons->addStrut(kButtonHeight);
  buttons->addWidget(m_hint, 1);
  buttons->addStretch();
  buttons->addWidget(m_button1.background);
  buttons->addWidget(m_button2.background);

  auto* const inside = new QVBoxLayout(m_border);
  inside->setContentsMargins(kit::kBroad, kit::kBroad, kit::kBroad, kit::kWide);
  inside->setSpacing(kit::kWide);
  inside->addLayout(report);
  inside->addWidget(m_bar1.background);
  inside->addWidget(m_bar2.background);
  inside->addStretch(1);
  inside->addLayout(buttons);
  auto* const all = new QVBoxLayout(this);
  all->setContentsMargins(kit::kWide, kit::kWide, kit::kWide, kit::kWide);
  all->addWidget(m_border);
}

updateForm::Bar updateForm::MakeBar(int number, const QString& accessibleName) {
  Bar bar;
  bar.background = new Groove(m_border);
  bar.background->setObjectName(QString("progressBackground%1").arg(number));
  bar.shape = new ProgressShape(*bar.background);
  bar.shape->setObjectName(QString("progressBar%1").arg(number));
  bar.shape->setAccessibleName(accessibleName);
  return bar;
}

updateForm::Button updateForm::MakeButton(int number) {
  Button button;
  button.background = new QPushButton(m_border);
  button.background->setObjectName(QString("formButtonBackground%1").arg(number));
  button.background->setMinimumSize(kButtonWidth, kButtonHeight);
  button.background->setAutoDefault(false);
  button.caption =
      kit::MakeLabel(QString("formButtonCaption%1").arg(number), kit::TextStyle::Plain, "", button.background);
  button.caption->setAlignment(Qt::AlignCenter);
  button.caption->setAttribute(Qt::WA_TransparentForMouseEvents);
  auto* const over = new QHBoxLayout(button.background);
  over->setContentsMargins(kGrid, 0, kGrid, 0);
  over->addWidget(button.caption);
  return button;
}

void updateForm::ShowColors() {
  const auto show = [this](QLabel& label, QStyle::StandardPixmap picture) {
    label.setPixmap(kit::MessageIcon(picture, palette()).pixmap(kIconSide));
  };
  show(*m_okIcon, QStyle::SP_DialogApplyButton);
  show(*m_warningIcon, QStyle::SP_MessageBoxWarning);
  QPalette onAccent = palette();
  onAccent.setColor(m_button2.caption->foregroundRole(), kit::ColorOf(kit::ColorRole::AccentText, palette()));
  m_button2.caption->setPalette(onAccent);
}

void updateForm::hideButtons() {
  m_button1.Hide();
  m_button2.Hide();
}

void updateForm::showYesNoButtons() {
  m_hint->hide();
  m_button1.Show(tr("YES"));
  m_button2.Show(tr("NO"));
}

void updateForm::resetForm() {
  hideButtons();
  m_title->setText(tr("Updating items ..."));
  for (const Bar& bar : {m_bar1, m_bar2}) {
    bar.SetVisible(true);
    bar.shape->SetPercentage(0);
  }
  m_okIcon->hide();
  m_warningIcon->hide();
  for (kit::WrapLabel* const line : {m_step, m_element}) {
    line->clear();
    line->show();
  }
  m_hint->show();
}

void updateForm::progressA(std::int32_t percentage) {
  Fit();
  m_bar1.shape->SetPercentage(percentage);
}

void updateForm::progressB(std::int32_t percentage) {
  Fit();
  m_bar2.shape->SetPercentage(percentage);
}

void updateForm::showStep(const std::string& text) { m_step->setText(kit::Translated(text)); }

void updateForm::showElement(const std::string& text) {
  m_element->setText(kit::Translated(text));
  // The layouts would only hear of it with the next turn of the event loop.
  m_border->layout()->activate();
  m_border->updateGeometry();
  const int needed = layout()->totalHeightForWidth(width());
  if (needed > height()) resize(width(), needed);
}

void updateForm::showWarning(const std::string& text) {
  m_bar1.SetVisible(false);
  m_bar2.SetVisible(false);
  m_step->hide();
  m_warningIcon->show();
  Finish(tr("Warning!"), text);
}

void updateForm::showMessage(const std::string& text) {
  progressA(100);
  m_bar2.SetVisible(false);
  m_step->setText(tr("(3/3) Completed"));
  m_okIcon->show();
  Finish(tr("Success"), text);
}

void updateForm::Finish(const QString& title, const std::string& text) {
  m_title->setText(title);
  m_hint->hide();
  m_button2.Show(tr("OK"));
  showElement(text);
  m_button2.background->setAccessibleDescription(m_element->text());
  m_button2.background->setFocus();
  QAccessibleEvent alert(m_element, QAccessible::Alert);
  QAccessible::updateAccessibility(&alert);
}

void updateForm::showModal(const std::function<void()>& activated) {
  // As soon as the dialog is there: its own event loop, in which the update then runs, comes first.
  QMetaObject::invokeMethod(
      this,
      [this, activated] {
        if (isVisible()) activated();
      },
      Qt::QueuedConnection);
  exec();
}

void updateForm::setVisible(bool visible) {
  if (visible) Fit();
  QDialog::setVisible(visible);
}

void updateForm::changeEvent(QEvent* event) {
  QDialog::changeEvent(event);
  if (event->type() == QEvent::PaletteChange && m_fitted) ShowColors();
}

}  // namespace kestrin::ui::update
