// SPDX-License-Identifier: MIT
#include "rig/window/Person.h"

#include <X11/XKBlib.h>
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>

#include <array>
#include <stdexcept>

namespace kestrin::rig {

namespace {

/// Windows may vanish while they are asked for; that is no reason to end the test.
int IgnoreError(Display*, XErrorEvent*) { return 0; }

/// The key for a letter, and whether it needs the shift key.
struct Key {
  KeyCode code = 0;
  bool shift = false;
};

Key KeyOf(Display* display, KeySym symbol) {
  const KeyCode code = XKeysymToKeycode(display, symbol);
  if (code == 0) throw std::runtime_error("the keyboard has no such key");
  return {code, XkbKeycodeToKeysym(display, code, 0, 0) != symbol};
}

}  // namespace

void Person::Closer::operator()(_XDisplay* display) const { XCloseDisplay(display); }

Person::Person(const std::string& display) : m_display(XOpenDisplay(display.c_str())) {
  if (m_display == nullptr) throw std::runtime_error("there is no screen " + display);
  XSetErrorHandler(&IgnoreError);
}

unsigned long Person::TopWindowAt(Spot spot) const {
  Display* const display = m_display.get();
  const Window root = DefaultRootWindow(display);
  Window window = None;
  int x = 0;
  int y = 0;
  XTranslateCoordinates(display, root, root, spot.x, spot.y, &x, &y, &window);
  return window;
}

std::string Person::WindowAt(Spot spot) const {
  Display* const display = m_display.get();
  const Window window = TopWindowAt(spot);
  if (window == None) return "";
  Atom type = None;
  int format = 0;
  unsigned long count = 0;
  unsigned long rest = 0;
  unsigned char* text = nullptr;
  constexpr long kMostWords = 256;
  XGetWindowProperty(display, window, XInternAtom(display, "_NET_WM_NAME", False), 0, kMostWords, False,
                     XInternAtom(display, "UTF8_STRING", False), &type, &format, &count, &rest, &text);
  if (text == nullptr) return "";
  std::string title(reinterpret_cast<const char*>(text), count);
  XFree(text);
  return title;
}

void Person::Click(Spot spot, int times) const {
  Display* const display = m_display.get();
  XTestFakeMotionEvent(display, -1, spot.x, spot.y, CurrentTime);
  for (int time = 0; time < times; ++time)
    for (const Bool down : {True, False}) XTestFakeButtonEvent(display, Button1, down, CurrentTime);
  XSync(display, False);
}

void Person::FocusFrontWindow() const {
  Display* const display = m_display.get();
  Window root = None;
  Window parent = None;
  Window* windows = nullptr;
  unsigned count = 0;
  if (XQueryTree(display, DefaultRootWindow(display), &root, &parent, &windows, &count) == 0) return;
  // From front to back; menus have the keyboard by themselves.
  for (unsigned left = count; left > 0; --left) {
    XWindowAttributes attributes{};
    if (XGetWindowAttributes(display, windows[left - 1], &attributes) == 0) continue;
    if (attributes.map_state != IsViewable || attributes.override_redirect != False ||
        attributes.c_class != InputOutput)
      continue;
    XSetInputFocus(display, windows[left - 1], RevertToPointerRoot, CurrentTime);
    break;
  }
  XFree(windows);
}

void Person::Press(const std::vector<std::string>& keys) const {
  Display* const display = m_display.get();
  std::vector<KeyCode> codes;
  for (const std::string& key : keys) codes.push_back(KeyOf(display, XStringToKeysym(key.c_str())).code);
  FocusFrontWindow();
  for (const KeyCode code : codes) XTestFakeKeyEvent(display, code, True, CurrentTime);
  for (auto code = codes.rbegin(); code != codes.rend(); ++code) XTestFakeKeyEvent(display, *code, False, CurrentTime);
  XSync(display, False);
}

void Person::Type(const std::string& text) const {
  Display* const display = m_display.get();
  FocusFrontWindow();
  const KeyCode shift = XKeysymToKeycode(display, XK_Shift_L);
  for (const char letter : text) {
    // Symbols of letters up to 255 have the letters' own numbers.
    const Key key = KeyOf(display, static_cast<KeySym>(static_cast<unsigned char>(letter)));
    if (key.shift) XTestFakeKeyEvent(display, shift, True, CurrentTime);
    for (const Bool down : {True, False}) XTestFakeKeyEvent(display, key.code, down, CurrentTime);
    if (key.shift) XTestFakeKeyEvent(display, shift, False, CurrentTime);
  }
  XSync(display, False);
}

void Person::CloseWindowAt(Spot spot) const {
  Display* const display = m_display.get();
  XEvent event{};
  event.xclient.type = ClientMessage;
  event.xclient.window = TopWindowAt(spot);
  event.xclient.message_type = XInternAtom(display, "WM_PROTOCOLS", False);
  event.xclient.format = 32;
  event.xclient.data.l[0] = static_cast<long>(XInternAtom(display, "WM_DELETE_WINDOW", False));
  XSendEvent(display, event.xclient.window, False, NoEventMask, &event);
  XSync(display, False);
}

}  // namespace kestrin::rig
