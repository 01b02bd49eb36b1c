#include "panel/browser_targets.h"

#include <string>

namespace {

std::u16string Lower(std::u16string_view text) {
    std::u16string lower(text);
    for (char16_t& c : lower) {
        if (c >= u'A' && c <= u'Z') c = static_cast<char16_t>(c + 32);
    }
    return lower;
}

}  // namespace

bool IsWebAddress(std::u16string_view text) {
    const std::u16string lower = Lower(text.substr(0, 8));
    for (std::u16string_view scheme : {u"http://", u"https://"}) {
        if (lower.starts_with(scheme) && text.size() > scheme.size()) return true;
    }
    return false;
}

bool IsBrowserDocument(std::u16string_view fileName) {
    const std::size_t dot = fileName.rfind(u'.');
    if (dot == std::u16string_view::npos) return false;
    const std::u16string extension = Lower(fileName.substr(dot + 1));
    static constexpr std::u16string_view kShown[] = {
        u"htm", u"html", u"xhtml", u"txt", u"log", u"csv", u"xml", u"json",
        u"png", u"jpg", u"jpeg", u"gif", u"bmp", u"webp", u"svg", u"pdf"};
    for (std::u16string_view shown : kShown) {
        if (extension == shown) return true;
    }
    return false;
}
