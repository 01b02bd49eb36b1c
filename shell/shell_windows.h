// Between the parts of the phone shell: the soft-key bars and the key translation.
#pragma once

#include <windows.h>

// Puts the window at the bottom of the screen when it is a soft-key bar.
void PlaceSoftKeyBar(HWND window);
void StartKeyTranslation();
void StopKeyTranslation();
