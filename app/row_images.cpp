#include "app/row_images.h"

#include "shell/shell_state.h"
#include "res/resource.h"

HIMAGELIST CreateRowImages(COLORREF background) {
    const COLORREF green = RGB(0, 255, 0);
    HBITMAP rows = LoadBitmapW(Shell().instance, MAKEINTRESOURCEW(IDB_ROW_IMAGES));
    // Bitmap 110 is loaded beside it and let go unused: the rows draw only from 108.
    HBITMAP spare = LoadBitmapW(Shell().instance, MAKEINTRESOURCEW(IDB_SPARE));
    HIMAGELIST images = ImageList_Create(16, 16, ILC_MASK | ILC_COLOR24, 31, 31);
    if (images && rows) ImageList_AddMasked(images, rows, green);
    if (images) ImageList_SetBkColor(images, background);
    if (rows) DeleteObject(rows);
    if (spare) DeleteObject(spare);
    return images;
}
