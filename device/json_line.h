// One JSON object on one line, for logs that tests and tools read back: strings escaped,
// byte buffers as lower-case hex.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace dev {

std::string JsonQuote(std::string_view utf8);  // a JSON string literal
std::string HexText(const std::uint8_t* data, std::size_t size);
std::string HexText(const std::vector<std::uint8_t>& data);

// Fields appended in order; Line() closes the object.
struct JsonObject {
    std::string text;
};
void JsonAdd(JsonObject& object, std::string_view name, std::int64_t value);
void JsonAdd(JsonObject& object, std::string_view name, std::string_view utf8);
void JsonAdd(JsonObject& object, std::string_view name, const char* utf8);
void JsonAddBool(JsonObject& object, std::string_view name, bool value);
// A value already in JSON form (an array, a nested object).
void JsonAddRaw(JsonObject& object, std::string_view name, std::string_view json);
std::string JsonText(const JsonObject& object);  // "{...}" without a line end

// "[a,b,...]" of JSON values.
std::string JsonArray(const std::vector<std::string>& jsonValues);

}  // namespace dev
