#pragma once

#include <array>
#include <cstdint>
#include <map>

#include "app/theme/Card.h"
#include "device/TLS.h"
#include "motion/DetectionParameter.h"

class QLabel;
class QPushButton;
class QSlider;

namespace kestrin::motion::ui {

/// The panel "Acceleration Sensor Configuration": six sliders for a sound board's detection parameters. It talks to no
/// board; its owner sends what it shows.
class ConfigFrame : public app::Card {
  Q_OBJECT

 public:
  static constexpr const char* kCaption = "Acceleration Sensor Configuration";

  /// Starts hidden, with the factory values.
  explicit ConfigFrame(QWidget* parent = nullptr);

  /// Shows what a board of that `DeviceRevision` holds. Values outside a slider's range are shown as the nearest one
  /// inside. Boards without a flash period show the factory value.
  void ShowValues(const device::AccParam& board, std::uint16_t revision);
  /// Shows the panel; on boards without a flash period its slider and label cannot be used.
  void Open(std::uint16_t revision);
  /// What the sliders show, in the units that people see.
  [[nodiscard]] std::map<const DetectionParameter*, std::int32_t> Values() const;

 signals:
  /// `SendCmdBtn`: the values are to be sent to the board.
  void sendRequested();

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  struct Row {
    QSlider* slider = nullptr;
    QLabel* label = nullptr;
  };

  void MakeLayout();
  [[nodiscard]] QWidget* MakeGroup(std::size_t first, std::size_t last);
  [[nodiscard]] Row MakeRow(const DetectionParameter& parameter, std::size_t index);
  void SetValue(std::size_t index, std::int32_t value);
  void ShowFactoryDefaults();

  std::array<Row, kDetectionParameters.size()> m_rows;
};

}  // namespace kestrin::motion::ui
