#pragma once

#include <string>

// Stand-ins for the libraries and modules that the frame starts up: they only write down who was
// called. The frame's own sources are linked with them into one shared library, so that the loader
// of the operating system attaches and detaches it as it does the real one.

/// The calls since the last one of this function, one letter each: a capital for initialise, a
/// small one for finalise.
std::string test_TakeTrace();

/// Lets the initialise of the letter `stage` throw; none for '\0'.
void test_FailStage(char stage);

/// Hands the letters of the calls so far and of all later ones to `receiver` as well; null ends it.
/// Undecorated, so that a C program can see the library being unloaded.
extern "C" void test_SendTrace(void (*receiver)(char letter));
