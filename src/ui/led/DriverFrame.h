#pragma once

#include <QByteArray>
#include <QString>
#include <array>

#include "core/led/Color.h"
#include "core/led/LED_Driver.h"
#include "ui/kit/Card.h"

class QComboBox;
class QGridLayout;
class QLabel;
class QPushButton;
class QSlider;
class QSpinBox;

namespace kestrin::ui::kit {
class Pictures;
}

namespace kestrin::ui::led {

class ChannelLabel;

/// "Driver configuration": LED type, output channels, overdrive, and the button that writes them to the board. Setting
/// its controls from the program is not told as the person's action.
class DriverFrame : public kit::Card {
  Q_OBJECT

 public:
  /// The pictures must outlive the frame.
  explicit DriverFrame(const kit::Pictures& pictures, QWidget* parent = nullptr);

  void ClearTypes();
  /// The name's bytes as the catalogue has them: a text of them need not lead back to the type.
  void AppendType(const QByteArray& name);
  /// Until then none is chosen.
  void SelectType(int index);
  /// 0 (black) for a channel, 1 .. 4, that is not used.
  void SetChannelColor(int channel, core::led::Color color);
  /// In percent. The slider begins at 1.
  void SetOverdriveMaximum(int percent);
  void SetOverdrive(int percent);
  [[nodiscard]] int Overdrive() const;
  /// "120%".
  void SetOverdriveText(const QString& text);
  [[nodiscard]] QString OverdriveText() const;
  /// The update button can be used; or cannot for this reason.
  void EnableUpdate(const QString& whyNot);

 signals:
  void typeChosen(const QByteArray& name);
  void overdriveMoved();
  void updateRequested();

 private:
  [[nodiscard]] QLabel* AddCaption(const QString& text, int column);
  void AddType();
  void AddChannels();
  void AddOverdrive();
  void AddUpdate(const kit::Pictures& pictures);

  QGridLayout* m_grid;
  QComboBox* m_types = nullptr;
  std::array<ChannelLabel*, core::led::LED_Driver::kChannels> m_channels{};
  QSlider* m_overdrive = nullptr;
  QSpinBox* m_percent = nullptr;
  QPushButton* m_update = nullptr;
};

}  // namespace kestrin::ui::led
