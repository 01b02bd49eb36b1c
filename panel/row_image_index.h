// The pictures of the row image list (bitmap 108: 22 images of 16x16, index 0 the device
// list's), by what a row shows. The bitmap's generator draws them in this order.
#pragma once

enum RowImageIndex : int {
    kImageDevice = 0,
    kImageText = 1,
    kImageButton = 2,            // also a pressable Image
    kImageCheckOn = 3,
    kImageCheckOff = 4,
    kImageRadioOn = 5,
    kImageRadioOff = 6,
    kImagePasswordOut = 7,
    kImagePasswordIn = 8,
    kImageDateTime = 9,
    kImageSectionOff = 10,
    kImageSectionOn = 11,
    kImageList = 12,
    kImageNumberReadOnly = 13,
    kImageChart = 14,
    kImageBlob = 15,
    kImageFiles = 16,
    kImageTextEditable = 17,
    kImageNumber = 18,
    kImageNumberNoSpin = 19,
    kImageListNoSpin = 20,
    kImageUnknown = 21,
};
