#include "app/help/HelpTopics.h"

namespace kestrin::app {

namespace {

constexpr HelpTopic kTopics[] = {
    {HelpContext::Overview, "overview.html"},
    {HelpContext::FirstSteps, "first-steps.html"},
    {HelpContext::Keyboard, "keyboard.html"},
    {HelpContext::Messages, "messages.html"},
    {HelpContext::Files, "files.html"},
    {HelpContext::Main, "window.html"},
    {HelpContext::Open, "sets.html#open"},
    {HelpContext::Save, "sets.html#save"},
    {HelpContext::Setup, "motion.html"},
    {HelpContext::Download, "download.html"},
    {HelpContext::Update, "update.html"},
    {HelpContext::OnlinePicture, "connection.html#online"},
    {HelpContext::HelpLine, "window.html#helpline"},
    {HelpContext::NoBoardQuestion, "connection.html#notfound"},
    {HelpContext::Permissions, "permissions.html"},
    {HelpContext::Explorer, "explorer.html"},
    {HelpContext::DriveList, "explorer.html#drives"},
    {HelpContext::FolderList, "explorer.html#folders"},
    {HelpContext::FileList, "explorer.html#files"},
    {HelpContext::Slots, "slots.html"},
    {HelpContext::Boot, "slots.html#boot"},
    {HelpContext::PwrOn, "slots.html#pwron"},
    {HelpContext::PwrOff, "slots.html#pwroff"},
    {HelpContext::Motion, "slots.html#motion"},
    {HelpContext::Impact, "slots.html#impact"},
    {HelpContext::Lockup, "slots.html#lockup"},
    {HelpContext::Idle, "slots.html#idle"},
    {HelpContext::Volume, "volume.html"},
    {HelpContext::Waveform, "volume.html#waveform"},
    {HelpContext::Memory, "memory.html"},
    {HelpContext::Preview, "preview.html"},
    {HelpContext::UnsavedSet, "sets.html#unsaved"},
    {HelpContext::Undo, "sets.html#undo"},
    {HelpContext::DownloadFrame, "download.html#frame"},
    {HelpContext::CancelQuestion, "download.html#cancel"},
    {HelpContext::ConfigFrame, "motion.html"},
    {HelpContext::MotionDetection, "motion.html#swings"},
    {HelpContext::ImpactDetection, "motion.html#hits"},
    {HelpContext::LockupFlash, "motion.html#flash"},
    {HelpContext::LedFrame, "led.html"},
    {HelpContext::LedConfiguration, "led.html#type"},
    {HelpContext::IdlePulse, "led.html#idle"},
    {HelpContext::FlashOnClash, "led.html#clash"},
    {HelpContext::ColorPicker, "led.html#picker"},
    {HelpContext::LedSettings, "led.html#settings"},
    {HelpContext::UpdateForm, "update.html#progress"},
};

}  // namespace

std::span<const HelpTopic> HelpTopics() { return kTopics; }

}  // namespace kestrin::app
