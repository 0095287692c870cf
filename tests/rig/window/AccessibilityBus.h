// SPDX-License-Identifier: MIT
#pragma once

#include <gio/gio.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "rig/ObjectDeleter.h"

namespace kestrin::rig {

/// What a screen reader is told about one thing in a window.
struct Control {
  /// In the words of the accessibility interface: "push button", "list item", ...
  std::string role;
  std::string name;
  std::string description;
  /// One bit for each of State.
  std::uint64_t states = 0;

  /// Numbers as the interface defines them.
  enum class State { Checked = 4, Enabled = 8, Focusable = 11, Focused = 12, Selected = 23, Showing = 25 };
  [[nodiscard]] bool Is(State state) const { return (states >> static_cast<unsigned>(state) & 1U) != 0; }

  /// Where to ask for more: the program on the bus and the thing's path there.
  std::string program;
  std::string path;
  /// The title of the window that it is in.
  std::string window;
  /// Name of the thing that it is part of.
  std::string parent;
};

/// A pixel of the screen.
struct Spot {
  int x = 0;
  int y = 0;
};

/// What a screen reader sees of the programs of a session. A thing that goes while it is asked is not there.
class AccessibilityBus {
 public:
  /// Makes programs tell about themselves, as a screen reader does that starts. Throws when the session does not
  /// answer.
  explicit AccessibilityBus(const std::string& sessionBus);

  /// Everything that is shown now, from the windows inwards.
  [[nodiscard]] std::vector<Control> Shown() const;
  /// The middle of `control` on the screen; nothing when it has no extent.
  [[nodiscard]] std::optional<Spot> Middle(const Control& control) const;
  /// Number of a slider or bar; nothing when it has none.
  [[nodiscard]] std::optional<double> Value(const Control& control) const;

 private:
  struct VariantDeleter {
    void operator()(GVariant* variant) const { g_variant_unref(variant); }
  };
  /// nullptr for an error.
  using Answer = std::unique_ptr<GVariant, VariantDeleter>;
  using Connection = std::unique_ptr<GDBusConnection, ObjectDeleter>;
  struct Question {
    std::string program;
    std::string path;
    const char* interface;
    const char* method;
    GVariant* arguments = nullptr;
  };

  [[nodiscard]] static Connection Connect(const std::string& address);
  /// Asks everything at once and waits for all answers: a program that works looks at its questions now and then only.
  [[nodiscard]] static std::vector<Answer> Ask(GDBusConnection& connection, const std::vector<Question>& questions);
  [[nodiscard]] Answer AskAbout(const Control& control, const char* interface, const char* method,
                                GVariant* arguments) const;
  /// The parts of all these, of which nothing is known yet but where they belong.
  [[nodiscard]] std::vector<Control> PartsOf(const std::vector<Control>& wholes) const;
  /// Leaves those that are shown, and finds out about them.
  void Describe(std::vector<Control>& controls) const;

  Connection m_session;
  Connection m_bus;
};

}  // namespace kestrin::rig
