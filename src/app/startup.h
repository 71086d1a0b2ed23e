#pragma once

// The program's entry function: brings the process up in a fixed order, runs
// the event loop and returns its exit code.
int qMain(int argc, char **argv);
