#pragma once

class QWidget;

namespace PluginDialogs {

// The window a plug-in's dialog belongs to, so that it is centred on it and
// has no task-bar entry of its own: the active window, or the window that a
// short-lived active one (a message box, a progress dialog, a menu) belongs
// to, or else the first visible window of the application. Null when the
// application shows no window.
QWidget *dialogParent();

} // namespace PluginDialogs
