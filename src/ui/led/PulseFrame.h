// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "ui/kit/Card.h"
#include "ui/kit/HelpContext.h"
#include "ui/led/BladeLight.h"

class QBoxLayout;
class QLabel;
class QPushButton;

namespace kestrin::ui::kit {
class Pictures;
}

namespace kestrin::ui::led {

class BladeView;
class PulsePlot;
class PulseShape;
class ValueBox;

/// The frame of one pulse: a picture of the blade as it plays, a plot over time, its levels and times, and the button
/// that sends it. It knows no rule; it shows what is set and tells what the person does.
class PulseFrame : public kit::Card {
  Q_OBJECT

 public:
  struct Button {
    const char* name;
    QString caption;
    QString purpose;
  };
  struct Box {
    const char* name;
    QString caption;
    QString unit;
    QString purpose;
  };
  /// What makes one pulse's frame different from the other's.
  struct Facts {
    const char* name;
    QString title;
    kit::HelpContext help;
    std::vector<Button> levels;
    std::vector<Box> boxes;
    Button send;
  };

  /// The pictures must outlive the frame.
  PulseFrame(const Facts& facts, const kit::Pictures& pictures, QWidget* parent = nullptr);

  /// Boxes and level buttons are counted from 0, in the order of the facts.
  /// What a box says; nothing for an empty one.
  void ShowNumber(std::size_t box, std::optional<double> number);
  /// What a level button's colour is.
  void ShowLevel(std::size_t button, const BladeLight& light);
  [[nodiscard]] QPushButton& LevelButton(std::size_t button) const { return *m_levels.at(button); }
  void EnableLevels(bool enabled);
  /// Whether the board has the pulse as it is shown.
  void ShowSent(bool sent);
  /// The send button can be used; or cannot for this reason.
  void EnableSend(const QString& whyNot);

  /// What plot and blade play.
  void ShowShape(const PulseShape& shape, int rest);
  /// At the low and at the high level of the pulse.
  void ShowLevels(const core::led::LED_Driver& driver, const Levels& low, const Levels& high);
  /// Lets the pictures begin with the board.
  void Restart();

 signals:
  void levelRequested(std::size_t button);
  /// What the person has typed into a box stands for this number now.
  void typed(std::size_t box, double number);
  void boxLeft(std::size_t box);
  void boxStepped(std::size_t box, int steps);
  void sendRequested();

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void AddLevels(const Facts& facts, QBoxLayout& layout);
  void AddBoxes(const Facts& facts, QBoxLayout& layout);
  void AddSend(const Facts& facts, QBoxLayout& layout);
  void ShowSendPicture();
  void ShowBlade();

  const kit::Pictures& m_pictures;
  QLabel* m_state;
  BladeView* m_blade;
  PulsePlot* m_plot;
  std::vector<QPushButton*> m_levels;
  std::vector<ValueBox*> m_boxes;
  QPushButton* m_send = nullptr;
  core::led::LED_Driver m_driver;
  Levels m_low{};
  Levels m_high{};
};

}  // namespace kestrin::ui::led
