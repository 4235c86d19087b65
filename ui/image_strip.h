// Image lists made from a bitmap strip of equally wide images (toolbar and menu images).
#pragma once

#include <windows.h>

#include <commctrl.h>

#include "ui/handles.h"

using CImageList = CUniqueHandle<NullHandleTraits<HIMAGELIST, &ImageList_Destroy>>;

// The images of bitmap `bitmapId` of the resource module, `imageWidth` pixels each and as
// high as the bitmap. A 32-bit strip keeps its alpha channel and has no mask; any other
// strip is masked with magenta (0xFF00FF) as the transparent colour. Empty on failure.
CImageList LoadImageStrip(UINT bitmapId, int imageWidth, bool thirtyTwoBit);
