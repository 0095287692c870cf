// SPDX-License-Identifier: MIT
#pragma once

namespace kestrin::ui::kit {

/// The help context numbers: one for every topic that a control of the program can ask for with F1. The numbers are the
/// ones in the help file, so a number keeps its meaning once it has been given away.
enum class HelpContext : int {
  Overview = 1000,
  FirstSteps = 1001,
  Keyboard = 1002,
  Messages = 1003,
  Files = 1004,

  Main = 1010,
  Open = 1011,
  Save = 1012,
  Setup = 1013,
  Download = 1014,
  Update = 1015,
  OnlinePicture = 1016,
  HelpLine = 1017,
  NoBoardQuestion = 1018,
  Permissions = 1019,

  Explorer = 1020,
  DriveList = 1021,
  FolderList = 1022,
  FileList = 1023,

  View = 1025,
  HelpMenu = 1026,
  About = 1027,

  Slots = 1030,
  /// The slots follow in the order of the slot kinds, see `HelpContextOfSlot`.
  Boot = 1031,
  PwrOn = 1032,
  PwrOff = 1033,
  Motion = 1034,
  Impact = 1035,
  Lockup = 1036,
  Idle = 1037,

  Volume = 1040,
  Waveform = 1041,
  Level = 1042,
  Memory = 1050,
  Preview = 1060,
  AsOnBoard = 1061,
  UnsavedSet = 1065,
  Undo = 1066,

  DownloadFrame = 1070,
  CancelQuestion = 1071,

  ConfigFrame = 1080,
  MotionDetection = 1081,
  ImpactDetection = 1082,
  LockupFlash = 1083,
  Sensor = 1084,

  LedFrame = 1090,
  LedConfiguration = 1091,
  IdlePulse = 1092,
  FlashOnClash = 1093,
  ColorPicker = 1094,
  LedSettings = 1095,

  UpdateForm = 1100,

  Doctor = 1110,

  Import = 1120,

  /// What is on the board.
  Board = 1130,
  Try = 1140,
};

/// The topic of a slot: kinds 1 boot, 2 power on, 3 power off, 4 motion, 5 impact, 6 lock-up, 7 idle; any other number
/// gives the topic about slots in general.
[[nodiscard]] constexpr HelpContext HelpContextOfSlot(int kind) {
  constexpr int kFirst = 1;
  constexpr int kLast = 7;
  if (kind < kFirst || kind > kLast) return HelpContext::Slots;
  return static_cast<HelpContext>(static_cast<int>(HelpContext::Slots) + kind);
}

}  // namespace kestrin::ui::kit
