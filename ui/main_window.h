#pragma once

class Window;

/// The root frame, over the standard screen: what every screen and dialog stands in. Null before
/// curses is started and after the widgets have been released.
extern Window* main_window;
