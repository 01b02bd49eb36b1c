// What the browser is given: only a web address, or a received file of a kind a browser shows.
// A device that sends the path of a program, or a program as a file, gets it neither run nor
// opened: the browser's own launcher might hand such a file to whatever runs it.
#pragma once

#include <string_view>

// "http://" or "https://" (any case) followed by something.
bool IsWebAddress(std::u16string_view text);

// A page, a text or a picture, by the name's extension.
bool IsBrowserDocument(std::u16string_view fileName);
