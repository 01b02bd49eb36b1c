// The image list of the device list and the panel rows: bitmap 108, 22 images of 16x16.
#pragma once

#include <windows.h>
#include <commctrl.h>

HIMAGELIST CreateRowImages(COLORREF background);
