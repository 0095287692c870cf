// SPDX-License-Identifier: MIT
#include "ui/help/HelpTopics.h"

namespace kestrin::ui::help {

namespace {

constexpr HelpTopic kTopics[] = {
    {kit::HelpContext::Overview, "overview.html"},
    {kit::HelpContext::FirstSteps, "first-steps.html"},
    {kit::HelpContext::Keyboard, "keyboard.html"},
    {kit::HelpContext::Messages, "messages.html"},
    {kit::HelpContext::Files, "files.html"},
    {kit::HelpContext::Main, "window.html"},
    {kit::HelpContext::Open, "sets.html#open"},
    {kit::HelpContext::Save, "sets.html#save"},
    {kit::HelpContext::Setup, "motion.html"},
    {kit::HelpContext::Download, "download.html"},
    {kit::HelpContext::Update, "update.html"},
    {kit::HelpContext::OnlinePicture, "connection.html#online"},
    {kit::HelpContext::HelpLine, "window.html#helpline"},
    {kit::HelpContext::NoBoardQuestion, "connection.html#notfound"},
    {kit::HelpContext::Permissions, "permissions.html"},
    {kit::HelpContext::Explorer, "explorer.html"},
    {kit::HelpContext::DriveList, "explorer.html#drives"},
    {kit::HelpContext::FolderList, "explorer.html#folders"},
    {kit::HelpContext::FileList, "explorer.html#files"},
    {kit::HelpContext::View, "window.html#view"},
    {kit::HelpContext::HelpMenu, "window.html#help"},
    {kit::HelpContext::About, "window.html#about"},
    {kit::HelpContext::Slots, "slots.html"},
    {kit::HelpContext::Boot, "slots.html#boot"},
    {kit::HelpContext::PwrOn, "slots.html#pwron"},
    {kit::HelpContext::PwrOff, "slots.html#pwroff"},
    {kit::HelpContext::Motion, "slots.html#motion"},
    {kit::HelpContext::Impact, "slots.html#impact"},
    {kit::HelpContext::Lockup, "slots.html#lockup"},
    {kit::HelpContext::Idle, "slots.html#idle"},
    {kit::HelpContext::Volume, "volume.html"},
    {kit::HelpContext::Waveform, "volume.html#waveform"},
    {kit::HelpContext::Level, "volume.html#level"},
    {kit::HelpContext::Memory, "memory.html"},
    {kit::HelpContext::Preview, "preview.html"},
    {kit::HelpContext::AsOnBoard, "preview.html#board"},
    {kit::HelpContext::UnsavedSet, "sets.html#unsaved"},
    {kit::HelpContext::Undo, "sets.html#undo"},
    {kit::HelpContext::DownloadFrame, "download.html#frame"},
    {kit::HelpContext::CancelQuestion, "download.html#cancel"},
    {kit::HelpContext::ConfigFrame, "motion.html"},
    {kit::HelpContext::MotionDetection, "motion.html#swings"},
    {kit::HelpContext::ImpactDetection, "motion.html#hits"},
    {kit::HelpContext::LockupFlash, "motion.html#flash"},
    {kit::HelpContext::Sensor, "sensor.html"},
    {kit::HelpContext::LedFrame, "led.html"},
    {kit::HelpContext::LedConfiguration, "led.html#type"},
    {kit::HelpContext::IdlePulse, "led.html#idle"},
    {kit::HelpContext::FlashOnClash, "led.html#clash"},
    {kit::HelpContext::ColorPicker, "led.html#picker"},
    {kit::HelpContext::LedSettings, "led.html#settings"},
    {kit::HelpContext::UpdateForm, "update.html#progress"},
    {kit::HelpContext::Doctor, "doctor.html"},
    {kit::HelpContext::Import, "import.html"},
    {kit::HelpContext::Board, "board.html"},
    {kit::HelpContext::Try, "try.html"},
};

}  // namespace

std::span<const HelpTopic> HelpTopics() { return kTopics; }

}  // namespace kestrin::ui::help
