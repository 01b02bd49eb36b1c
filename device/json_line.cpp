#include "device/json_line.h"

#include <cstdio>

namespace dev {

namespace {

void Name(JsonObject& object, std::string_view name) {
    object.text += object.text.empty() ? "{" : ",";
    object.text += JsonQuote(name);
    object.text += ':';
}

}  // namespace

std::string JsonQuote(std::string_view utf8) {
    std::string out = "\"";
    for (char c : utf8) {
        const auto u = static_cast<unsigned char>(c);
        switch (c) {
        case '"': out += "\\\""; break;
        case '\\': out += "\\\\"; break;
        case '\n': out += "\\n"; break;
        case '\r': out += "\\r"; break;
        case '\t': out += "\\t"; break;
        default:
            if (u < 0x20) {
                char escaped[8];
                std::snprintf(escaped, sizeof escaped, "\\u%04x", u);
                out += escaped;
            } else {
                out += c;
            }
        }
    }
    return out + "\"";
}

std::string HexText(const std::uint8_t* data, std::size_t size) {
    static const char digits[] = "0123456789abcdef";
    std::string out;
    out.reserve(size * 2);
    for (std::size_t i = 0; i < size; ++i) {
        out += digits[data[i] >> 4];
        out += digits[data[i] & 15];
    }
    return out;
}

std::string HexText(const std::vector<std::uint8_t>& data) { return HexText(data.data(), data.size()); }

void JsonAdd(JsonObject& object, std::string_view name, std::int64_t value) {
    Name(object, name);
    object.text += std::to_string(value);
}

void JsonAdd(JsonObject& object, std::string_view name, std::string_view utf8) {
    Name(object, name);
    object.text += JsonQuote(utf8);
}

void JsonAdd(JsonObject& object, std::string_view name, const char* utf8) {
    JsonAdd(object, name, std::string_view(utf8));
}

void JsonAddBool(JsonObject& object, std::string_view name, bool value) {
    Name(object, name);
    object.text += value ? "true" : "false";
}

void JsonAddRaw(JsonObject& object, std::string_view name, std::string_view json) {
    Name(object, name);
    object.text += json;
}

std::string JsonText(const JsonObject& object) {
    return object.text.empty() ? "{}" : object.text + "}";
}

std::string JsonArray(const std::vector<std::string>& jsonValues) {
    std::string out = "[";
    for (std::size_t i = 0; i < jsonValues.size(); ++i) {
        if (i) out += ',';
        out += jsonValues[i];
    }
    return out + "]";
}

}  // namespace dev
