// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QWidget>

class QKeySequence;
class QLabel;
class QPushButton;

namespace kestrin::ui::kit {
class Pictures;
}

namespace kestrin::ui::led {

/// The head of the LED setup panel: its caption, what is wrong with catalogue or board, and the buttons for pulses that
/// are kept elsewhere than on the board.
class LedHead : public QWidget {
  Q_OBJECT

 public:
  /// "LED DRIVER SETUP".
  static constexpr const char* kCaption = QT_TR_NOOP("LED DRIVER SETUP");

  /// `programFolder` is left out of what is told. The pictures must outlive the head.
  LedHead(const kit::Pictures& pictures, const QString& programFolder, QWidget* parent = nullptr);

  /// What is wrong; "" for nothing.
  void ShowNotice(const QString& text);
  /// Whether there are pulses to bring back.
  void OfferBringBack(bool offered);
  /// Whether an LED driver is online: the key for opening a file is the panel's then.
  void SetOnline(bool online);

 signals:
  void bringBackRequested();
  void openRequested();
  void saveRequested();

 private:
  [[nodiscard]] QPushButton* MakeButton(const char* name, const QString& text, void (LedHead::*signal)());
  void AddPicture(QPushButton& button, const kit::Pictures& pictures, const QString& picture);
  /// Also tells what the button is for, and the key.
  static void SetShortcut(QPushButton& button, const QKeySequence& keys);

  QString m_programFolder;
  QLabel* m_notice;
  QPushButton* m_bringBack;
  QPushButton* m_open;
  QPushButton* m_save;
};

}  // namespace kestrin::ui::led
