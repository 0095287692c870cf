// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>
#include <array>
#include <cstdint>
#include <optional>

#include "core/device/TLS.h"
#include "core/motion/DetectionParameter.h"
#include "core/motion/KnownValues.h"
#include "core/motion/SensorRecord.h"
#include "ui/kit/Card.h"

class QBoxLayout;
class QGridLayout;
class QLabel;
class QPushButton;

namespace kestrin::ui::kit {
class LinkButton;
}

namespace kestrin::ui::motion {

class ParameterSlider;
class SensorColumn;
class Shelf;
class SuggestionBox;

/// The panel "Acceleration Sensor Configuration": six sliders for a sound board's detection parameters. Each slider has
/// a mark where the board's value is, and says so when its own was not sent. Beside them is the picture of what the
/// board feels; where there is no room for both, one of them can be seen at a time. The panel talks to no board:
/// ConfigControl does what its buttons say, SensorControl brings what is felt.
class ConfigFrame : public kit::Card {
  Q_OBJECT

 public:
  static constexpr const char* kCaption = QT_TR_NOOP("Acceleration Sensor Configuration");

  /// What becomes of sliders that the person has moved.
  enum class Moved { Replace, Stay };

  /// Starts hidden, with the factory values, and with nothing known of any board.
  explicit ConfigFrame(QWidget* parent = nullptr);

  /// The sliders take what a board of that `DeviceRevision` holds. Values outside a slider's range are shown as the
  /// nearest one inside. Boards without a flash period show the factory value.
  void ShowValues(const core::device::AccParam& board, std::uint16_t revision, Moved moved = Moved::Replace);
  /// The sliders offer these values, which count as moved by the person.
  void Offer(const core::device::AccParam& values, std::uint16_t revision);
  /// Marks what is known of the board, and what of the sliders was not sent to it. Kept values can be put back.
  void ShowKnown(const core::motion::KnownValues& known, std::uint16_t revision);
  /// Shows the panel; on boards without a flash period its slider and label cannot be used.
  void Open(std::uint16_t revision);

  /// Shows what the board feels, with what is suggested by it.
  void ShowSensor(const core::motion::SensorRecord& record);
  /// Says why there is no picture of it, or what it waits for; "" when there is nothing to say.
  void SaySensor(const QString& text, bool canAskAgain = false);
  /// Whether somebody can see the picture.
  [[nodiscard]] bool IsSensorSeen() const;

  /// What the sliders show, as a board holds it.
  [[nodiscard]] core::device::AccParam Values() const;
  /// Whether a slider shows something else than what is known of the board.
  [[nodiscard]] bool HasUnsent() const;
  /// The sliders that the person has moved to values that are known to be neither on the board nor kept on this
  /// computer, each with its value, in words.
  [[nodiscard]] QStringList Unsaved() const;

 signals:
  /// `SendCmdBtn`: the values are to be sent to the board.
  void sendRequested();
  /// `ReadCmdBtn`: the board is to be read again.
  void readRequested();
  /// `PutBackBtn`: the kept values are to be offered.
  void putBackRequested();
  /// The trial of swings and taps is to begin once more.
  void startAgainRequested();
  /// The board that did not tell what it feels is to be asked again.
  void askAgainRequested();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct Row {
    ParameterSlider* slider = nullptr;
    QLabel* caption = nullptr;
    QLabel* label = nullptr;
    QLabel* state = nullptr;
    /// What it is for, and the line that it stands in; where there is room.
    QLabel* hint = nullptr;
    QBoxLayout* foot = nullptr;
    /// In the grid of its group.
    int line = 0;
    /// What it showed when the person had not moved it yet.
    int unmoved = 0;
  };

  void MakeLayout();
  void AddNotices(QBoxLayout& layout);
  [[nodiscard]] QBoxLayout* MakeHead();
  void MakeSensor();
  void MakeGroups();
  [[nodiscard]] QWidget* MakeGroup(std::size_t first, std::size_t last);
  void MakeRow(QWidget& group, std::size_t index);
  /// Puts the row into its group, as is right for the room that there is.
  void PlaceRow(std::size_t index);
  [[nodiscard]] int WidestCaption() const;
  /// Puts everything where it belongs in a window of that size.
  void Arrange(const QSize& size);
  /// In a narrow panel: shows the picture in place of the sliders, or the sliders.
  void Turn(bool toSensor);
  [[nodiscard]] QBoxLayout* MakeButtons();
  void SetValue(std::size_t index, std::int32_t value);
  void ShowFactoryDefaults();
  /// What a board's value is in the unit of the slider; empty when nothing is known, or there is no such value.
  [[nodiscard]] std::optional<std::int32_t> HeldBy(std::size_t index) const;
  /// Whether that slider shows something that is not known to be on the board.
  [[nodiscard]] bool IsUnsent(std::size_t index) const;
  void ShowState(std::size_t index);
  void ShowSummary();

  std::array<Row, core::motion::kDetectionParameters.size()> m_rows;
  QGridLayout* m_columns = nullptr;
  Shelf* m_shelf = nullptr;
  Shelf* m_sensorShelf = nullptr;
  SensorColumn* m_sensor = nullptr;
  SuggestionBox* m_suggestion = nullptr;
  /// What stands below the columns: the suggestion.
  QWidget* m_foot = nullptr;
  kit::LinkButton* m_turn = nullptr;
  /// Whether there is room for sliders and picture; not known before the first Arrange().
  std::optional<bool> m_isWide;
  /// Whether there is room for what each slider is for.
  bool m_isHigh = false;
  bool m_isTurned = false;
  /// The sheet that it lies on, whose width is that of the window.
  QWidget* m_ground = nullptr;
  QLabel* m_summary = nullptr;
  QPushButton* m_read = nullptr;
  QWidget* m_keptNotice = nullptr;
  core::motion::KnownValues m_known;
  std::uint16_t m_revision = core::motion::kFlashPeriodRevision;
};

}  // namespace kestrin::ui::motion
