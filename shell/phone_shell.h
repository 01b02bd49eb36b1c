// The handset shell on a desktop: the main window's client area is the phone's screen
// (240x320 pixels, scaled for the display's DPI), every full-screen dialog covers it above a
// soft-key bar, and the main window's caption shows the title of the screen in front.
//
// Keys: F1 and F2 press the left and right soft keys of the active window; Enter and Escape
// reach dialogs as the action key (IDOK) and Back (IDCANCEL); in list views the numeric
// keypad types digits, '*' arrives as VK_F8 and '#' as VK_F9, as the handset sends them.
#pragma once

#include <windows.h>

#include <string>

inline constexpr int kScreenWidth = 240;
inline constexpr int kScreenHeight = 320;
inline constexpr int kSoftKeyBarHeight = 26;

enum SoftKey { kLeftSoftKey = 0, kRightSoftKey = 1 };

// Makes the window the screen: sizes its client area, and translates the handset's keys on
// the calling thread until ShellDetachScreen.
void ShellAttachScreen(HWND mainWindow);
void ShellDetachScreen(HWND mainWindow);
// Moves the full-screen dialogs and bars along after the screen window moved.
void ShellLayoutScreen();
// Puts the bar of the dialog in front above everything (after the screen window came up).
void ShellRaiseFrontBar();
HWND ShellScreen();
// The screen in desktop coordinates.
RECT ShellScreenRect();
// Pixels of the 240x320 screen in the display's pixels.
int ShellScale(int pixels);

// Sizes the dialog to the screen above the soft-key bar and shows its title as the caption.
bool ShellInitDialog(HWND dialog);
// A soft-key bar from a menu resource: its first item is the left key, its second the right
// key (a command, or a popup of commands). nullptr when it cannot be made.
HWND ShellCreateMenuBar(HWND owner, int menuId);
HWND ShellMenuBar(HWND owner);
// Presses a soft key of the window's bar (a popup key opens its menu); the command reaches
// the window as WM_COMMAND. Posted, so it may be called from any thread.
void ShellPressSoftKey(HWND owner, SoftKey key);
std::wstring ShellSoftKeyLabel(HWND owner, SoftKey key);

// Rewrites one message of the handset's keys; true when it changed it.
bool ShellTranslateKey(MSG* message);

// Tests: makes every following ShellCreateMenuBar fail (or succeed again).
void ShellFailMenuBarsForTest(bool fail);
