// SPDX-License-Identifier: MIT
#include "ui/board/CompareRow.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QToolButton>
#include <utility>

#include "ui/board/DiffersSign.h"
#include "ui/kit/Grid.h"
#include "ui/kit/HelpText.h"
#include "ui/kit/Labels.h"
#include "ui/kit/PathText.h"
#include "ui/kit/ThemeColors.h"
#include "ui/sound/NameLabel.h"
#include "ui/sound/PlayIcon.h"
#include "ui/sound/SoundTexts.h"

namespace kestrin::ui::board {

using core::sound::ComparedSound;
using core::sound::Differs;
using kit::ColorOf;
using kit::ColorRole;

namespace {

constexpr int kEdge = 4;
constexpr int kTitleWidth = 96;
constexpr int kPlaySide = 22;
constexpr int kVolumeWidth = 48;
constexpr int kSecondsWidth = 48;
constexpr int kVerdictWidth = 176;
constexpr int kTakeOverWidth = 96;
/// Of a row. A narrower one leaves out how long sounds are: it would hardly have room for their names.
constexpr int kRoomForSeconds = 870;
/// Of a difference's colour in the row's ground, of 255.
constexpr int kRowTint = 26;

ColorRole ColorOfDifference(std::optional<Differs> differs) {
  if (!differs) return ColorRole::Soft;
  const bool isOnly = *differs == Differs::OnlyInFirst || *differs == Differs::OnlyInSecond;
  return isOnly ? ColorRole::Accent : ColorRole::Warning;
}

void Color(QWidget& widget, const QColor& color) {
  QPalette colors = widget.palette();
  colors.setColor(QPalette::WindowText, color);
  widget.setPalette(colors);
}

void MakeBold(QWidget& widget) {
  QFont bold = widget.font();
  bold.setBold(true);
  widget.setFont(bold);
}

}  // namespace

CompareRow::CompareRow(core::sound::ComparedPlace place, const CompareTexts& texts, QWidget* parent)
    : QWidget(parent), m_place(std::move(place)), m_title(sound::PlaceTitle(m_place.place)) {
  setObjectName("CompareRow");
  setFixedHeight(kHeight);
  auto* const title = kit::MakeLabel("PlaceLabel", kit::TextStyle::Plain, m_title, this);
  title->setFixedWidth(kTitleWidth);
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(kEdge + kit::kInset, 0, kit::kInset, 0);
  row->setSpacing(kit::kGrid);
  row->addWidget(title);
  m_sides[0] = MakeSide(m_place.here, Part::PlayHere, texts.notHere);
  m_sides[1] = MakeSide(m_place.there, Part::PlayThere, texts.notThere);
  row->addWidget(m_sides[0], 1);
  row->addWidget(MakeVerdict(texts));
  row->addWidget(m_sides[1], 1);
  row->addWidget(MakeTakeOver());
  ShowIcons();
}

QWidget* CompareRow::MakeSide(const std::optional<ComparedSound>& sound, Part play, const QString& nothing) {
  auto* const side = new QWidget(this);
  auto* const row = new QHBoxLayout(side);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(kit::kGrid);
  if (!sound) {
    row->addWidget(kit::MakeLabel("NothingLabel", kit::TextStyle::Soft, nothing, side), 1);
    return side;
  }
  const bool isHere = play == Part::PlayHere;
  const bool isOther = m_place.differs && *m_place.differs != Differs::Volume;
  auto* const name = new sound::NameLabel(side);
  name->setObjectName(isHere ? "HereLabel" : "ThereLabel");
  name->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  if (!sound->path.empty()) {
    auto* const button = new QToolButton(side);
    button->setObjectName(isHere ? "PlayHereBtn" : "PlayThereBtn");
    button->setFixedSize(kPlaySide, kPlaySide);
    m_buttons[static_cast<std::size_t>(play)] = button;
    connect(button, &QToolButton::clicked, this, [this, play] { emit pressed(play); });
    row->addWidget(button);
    name->setText(sound::FileName(sound->path));
    name->setToolTip(kit::TextOf(sound->path));
  } else {
    row->addSpacing(kPlaySide + kit::kGrid);
    name->setText(tr("Sound of %1").arg(sound::Duration(sound->samples)));
    name->setForegroundRole(QPalette::PlaceholderText);
    name->setToolTip(tr("This computer does not know the sound. A board does not give its sounds away."));
  }
  if (isOther) MakeBold(*name);
  row->addWidget(name, 1);
  if (sound->volume) AddFigure(*row, tr("%1 %").arg(*sound->volume), kVolumeWidth, m_place.differs == Differs::Volume);
  if (!sound->path.empty())
    AddFigure(*row, sound::Duration(sound->samples), kSecondsWidth, isOther).setObjectName("SecondsLabel");
  return side;
}

QLabel& CompareRow::AddFigure(QHBoxLayout& row, const QString& text, int width, bool isDifferent) {
  auto* const figure =
      kit::MakeLabel("FigureLabel", isDifferent ? kit::TextStyle::Plain : kit::TextStyle::Soft, text, this);
  figure->setFixedWidth(width);
  figure->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  if (isDifferent) MakeBold(*figure);
  row.addWidget(figure);
  return *figure;
}

QWidget* CompareRow::MakeVerdict(const CompareTexts& texts) {
  auto* const verdict = new QWidget(this);
  verdict->setObjectName("VerdictBox");
  verdict->setFixedWidth(kVerdictWidth);
  auto* const words =
      kit::MakeLabel("VerdictLabel", kit::TextStyle::Plain, DiffersText(m_place.differs, texts.there), verdict);
  if (m_place.differs) MakeBold(*words);
  auto* const row = new QHBoxLayout(verdict);
  row->setContentsMargins(kit::kGrid, 0, 0, 0);
  row->setSpacing(kit::kHalf);
  row->addWidget(new DiffersSign(m_place.differs, verdict));
  row->addWidget(words, 1);
  return verdict;
}

QWidget* CompareRow::MakeTakeOver() {
  auto* const place = new QWidget(this);
  place->setFixedWidth(kTakeOverWidth);
  const bool isKnown = m_place.there && !m_place.there->path.empty();
  if (!m_place.differs || !isKnown) return place;
  auto* const button = new QPushButton(tr("Take over"), place);
  button->setObjectName("TakeOverBtn");
  button->setAccessibleName(tr("Take over %1: %2 at %3 %")
                                .arg(m_title, sound::FileName(m_place.there->path))
                                .arg(m_place.there->volume.value_or(100)));
  kit::SetHelp(*button, tr("Put this sound at this volume into %1 of the open set").arg(m_title));
  button->setFixedHeight(kPlaySide);
  m_buttons[static_cast<std::size_t>(Part::TakeOver)] = button;
  connect(button, &QPushButton::clicked, this, [this] { emit pressed(Part::TakeOver); });
  auto* const row = new QHBoxLayout(place);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(button);
  return place;
}

void CompareRow::ShowPlaying(std::optional<Part> part) {
  m_playing = part;
  ShowIcons();
}

void CompareRow::ShowIcons() {
  for (const Part part : {Part::PlayHere, Part::PlayThere}) {
    auto* const button = static_cast<QToolButton*>(Button(part));
    if (button == nullptr) continue;
    const bool isHere = part == Part::PlayHere;
    const bool stops = m_playing == part;
    const QString name = sound::FileName((isHere ? m_place.here : m_place.there)->path);
    button->setIcon(sound::PlayIcon(stops, palette(), devicePixelRatioF()));
    button->setAccessibleName((stops ? tr("Stop %1: %2") : tr("Play %1: %2")).arg(m_title, name));
    button->setToolTip(stops ? tr("Stop") : tr("Play as the board does"));
    kit::SetHelp(*button, stops ? tr("Stop the sound") : tr("Hear the sound as the board plays it"));
  }
  const QColor color = ColorOf(ColorOfDifference(m_place.differs), palette());
  for (QWidget* const widget : findChild<QWidget*>("VerdictBox")->findChildren<QWidget*>()) Color(*widget, color);
}

int CompareRow::SideAt(int number) const { return m_sides.at(static_cast<std::size_t>(number))->x(); }

void CompareRow::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  for (QWidget* const seconds : findChildren<QWidget*>("SecondsLabel")) seconds->setVisible(width() >= kRoomForSeconds);
}

void CompareRow::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) ShowIcons();
}

void CompareRow::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  if (m_place.differs && !kit::IsHighContrast(palette())) {
    QColor tint = ColorOf(ColorOfDifference(m_place.differs), palette());
    tint.setAlpha(kRowTint);
    painter.fillRect(rect(), tint);
  }
  painter.fillRect(QRect(0, 0, kEdge, height()), kit::SlotColor(m_place.place.kind, palette()));
  painter.fillRect(QRect(kEdge, height() - 1, width() - kEdge, 1), ColorOf(ColorRole::Line, palette()));
}

}  // namespace kestrin::ui::board
