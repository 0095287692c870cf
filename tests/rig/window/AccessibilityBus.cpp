// SPDX-License-Identifier: MIT
#include "rig/window/AccessibilityBus.h"

#include <stdexcept>
#include <utility>

namespace kestrin::rig {

namespace {

constexpr const char* kAccessible = "org.a11y.atspi.Accessible";
constexpr const char* kComponent = "org.a11y.atspi.Component";
constexpr const char* kValue = "org.a11y.atspi.Value";
constexpr const char* kProperties = "org.freedesktop.DBus.Properties";
constexpr const char* kBusLauncher = "org.a11y.Bus";
constexpr const char* kBusPath = "/org/a11y/bus";
/// A busy program may take a while to answer.
constexpr int kPatienceMilliseconds = 30000;
/// Extents are asked for in pixels of the screen.
constexpr unsigned kOnScreen = 0;

/// Where the answer to one question goes, and how many are still out.
struct Pending {
  GVariant* answer = nullptr;
  int* open = nullptr;
};

void TakeAnswer(GObject* connection, GAsyncResult* result, gpointer data) {
  auto* const pending = static_cast<Pending*>(data);
  pending->answer = g_dbus_connection_call_finish(G_DBUS_CONNECTION(connection), result, nullptr);
  --*pending->open;
}

GVariant* PropertyArguments(const char* interface, const char* name) { return g_variant_new("(ss)", interface, name); }

/// The text in an answer of the form `format`; "" for none.
std::string TextIn(GVariant* answer, const char* format) {
  const char* text = nullptr;
  if (answer != nullptr && g_variant_check_format_string(answer, format, FALSE) != FALSE)
    g_variant_get(answer, format, &text);
  return text == nullptr ? "" : text;
}

/// The text of a property.
std::string PropertyIn(GVariant* answer) {
  if (answer == nullptr) return "";
  GVariant* value = nullptr;
  g_variant_get(answer, "(v)", &value);
  const bool isText = g_variant_is_of_type(value, G_VARIANT_TYPE_STRING) != FALSE;
  std::string text = isText ? g_variant_get_string(value, nullptr) : "";
  g_variant_unref(value);
  return text;
}

std::uint64_t StatesIn(GVariant* answer) {
  std::uint64_t states = 0;
  if (answer == nullptr) return states;
  GVariantIter* words = nullptr;
  g_variant_get(answer, "(au)", &words);
  std::uint32_t word = 0;
  for (unsigned shift = 0; g_variant_iter_next(words, "u", &word) != FALSE; shift += 32)
    states |= std::uint64_t{word} << shift;
  g_variant_iter_free(words);
  return states;
}

}  // namespace

AccessibilityBus::AccessibilityBus(const std::string& sessionBus) : m_session(Connect(sessionBus)) {
  GVariant* const on = g_variant_new("(ssv)", "org.a11y.Status", "IsEnabled", g_variant_new_boolean(TRUE));
  const auto answers = Ask(*m_session, {{kBusLauncher, kBusPath, kProperties, "Set", on},
                                        {kBusLauncher, kBusPath, kBusLauncher, "GetAddress"}});
  const std::string address = TextIn(answers[1].get(), "(&s)");
  if (answers[0] == nullptr || address.empty()) throw std::runtime_error("the session has no accessibility bus");
  m_bus = Connect(address);
}

AccessibilityBus::Connection AccessibilityBus::Connect(const std::string& address) {
  const auto how = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                     G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
  Connection connection(g_dbus_connection_new_for_address_sync(address.c_str(), how, nullptr, nullptr, nullptr));
  if (connection == nullptr) throw std::runtime_error("no bus answers at " + address);
  return connection;
}

std::vector<AccessibilityBus::Answer> AccessibilityBus::Ask(GDBusConnection& connection,
                                                            const std::vector<Question>& questions) {
  GMainContext* const context = g_main_context_new();
  g_main_context_push_thread_default(context);
  int open = static_cast<int>(questions.size());
  std::vector<Pending> pending(questions.size(), Pending{nullptr, &open});
  for (std::size_t i = 0; i < questions.size(); ++i) {
    const Question& question = questions[i];
    g_dbus_connection_call(&connection, question.program.c_str(), question.path.c_str(), question.interface,
                           question.method, question.arguments, nullptr, G_DBUS_CALL_FLAGS_NONE, kPatienceMilliseconds,
                           nullptr, &TakeAnswer, &pending[i]);
  }
  while (open > 0) g_main_context_iteration(context, TRUE);
  g_main_context_pop_thread_default(context);
  g_main_context_unref(context);
  std::vector<Answer> answers;
  for (const Pending& one : pending) answers.emplace_back(one.answer);
  return answers;
}

AccessibilityBus::Answer AccessibilityBus::AskAbout(const Control& control, const char* interface, const char* method,
                                                    GVariant* arguments) const {
  return std::move(Ask(*m_bus, {{control.program, control.path, interface, method, arguments}}).front());
}

std::vector<Control> AccessibilityBus::PartsOf(const std::vector<Control>& wholes) const {
  std::vector<Question> questions;
  for (const Control& whole : wholes) questions.push_back({whole.program, whole.path, kAccessible, "GetChildren"});
  const std::vector<Answer> answers = Ask(*m_bus, questions);
  std::vector<Control> parts;
  for (std::size_t i = 0; i < wholes.size(); ++i) {
    if (answers[i] == nullptr) continue;
    GVariantIter* each = nullptr;
    g_variant_get(answers[i].get(), "(a(so))", &each);
    const char* program = nullptr;
    const char* path = nullptr;
    while (g_variant_iter_next(each, "(&s&o)", &program, &path) != FALSE) {
      Control part;
      part.program = program;
      part.path = path;
      part.window = wholes[i].window;
      part.parent = wholes[i].name;
      parts.push_back(part);
    }
    g_variant_iter_free(each);
  }
  return parts;
}

void AccessibilityBus::Describe(std::vector<Control>& controls) const {
  std::vector<Question> questions;
  for (const Control& control : controls) {
    questions.push_back({control.program, control.path, kAccessible, "GetState"});
    questions.push_back({control.program, control.path, kAccessible, "GetRoleName"});
    for (const char* const property : {"Name", "Description"})
      questions.push_back(
          {control.program, control.path, kProperties, "Get", PropertyArguments(kAccessible, property)});
  }
  const std::vector<Answer> answers = Ask(*m_bus, questions);
  std::vector<Control> shown;
  for (std::size_t i = 0; i < controls.size(); ++i) {
    Control& control = controls[i];
    control.states = StatesIn(answers[4 * i].get());
    control.role = TextIn(answers[4 * i + 1].get(), "(&s)");
    control.name = PropertyIn(answers[4 * i + 2].get());
    control.description = PropertyIn(answers[4 * i + 3].get());
    if (control.Is(Control::State::Showing)) shown.push_back(control);
  }
  controls = std::move(shown);
}

std::vector<Control> AccessibilityBus::Shown() const {
  Control registry;
  registry.program = "org.a11y.atspi.Registry";
  registry.path = "/org/a11y/atspi/accessible/root";
  std::vector<Control> all;
  std::vector<Control> level = PartsOf(PartsOf({registry}));
  Describe(level);
  for (Control& window : level) window.window = window.name;
  while (!level.empty()) {
    all.insert(all.end(), level.begin(), level.end());
    level = PartsOf(level);
    Describe(level);
  }
  return all;
}

std::optional<Spot> AccessibilityBus::Middle(const Control& control) const {
  const Answer answer = AskAbout(control, kComponent, "GetExtents", g_variant_new("(u)", kOnScreen));
  if (answer == nullptr) return std::nullopt;
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
  g_variant_get(answer.get(), "((iiii))", &x, &y, &width, &height);
  if (width <= 0 || height <= 0) return std::nullopt;
  return Spot{x + width / 2, y + height / 2};
}

std::optional<double> AccessibilityBus::Value(const Control& control) const {
  const Answer answer = AskAbout(control, kProperties, "Get", PropertyArguments(kValue, "CurrentValue"));
  if (answer == nullptr) return std::nullopt;
  GVariant* value = nullptr;
  g_variant_get(answer.get(), "(v)", &value);
  const Answer number(value);
  if (g_variant_is_of_type(value, G_VARIANT_TYPE_DOUBLE) == FALSE) return std::nullopt;
  return g_variant_get_double(value);
}

}  // namespace kestrin::rig
