#pragma once

#include <functional>

namespace ml::app {

class CMainFrame;
class Session;

/// The program from start to exit: command line, settings, window, first load, event loop, saving. `loaded`
/// runs in the event loop after the first load; a program that drives the window begins there. Returns the
/// exit code. Only one at a time in a process.
int RunApplication(int& argc, char** argv, const std::function<void(CMainFrame&, Session&)>& loaded = {});

}  // namespace ml::app
