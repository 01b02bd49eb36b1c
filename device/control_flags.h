// Flag bits of a control record, as the device composes them; the numbers are the shared
// header's. Which bits a type reads is noted beside each; the client ignores the others.
#pragma once

#include "TremolanthWire.h"

#include <cstdint>

namespace dev {

inline constexpr std::uint32_t kHidden = TRM_HIDDEN;           // every type: no row
inline constexpr std::uint32_t kUtf16 = TRM_UTF16;            // every text of the record is UTF-16LE
inline constexpr std::uint32_t kBringIntoView = TRM_BRING_INTO_VIEW;   // scroll to it when its layout changes
inline constexpr std::uint32_t kEditable = TRM_EDITABLE;     // text, number, date-time: the user edits;
                                                        // check box: cannot be ticked; image:
                                                        // pressable; blob: its data is text;
                                                        // password: may be changed
inline constexpr std::uint32_t kMasked = TRM_MASKED;       // text: shown as "*"
inline constexpr std::uint32_t kMinimumApplies = TRM_MINIMUM_APPLIES;  // number
inline constexpr std::uint32_t kMaximumApplies = TRM_MAXIMUM_APPLIES;  // number
inline constexpr std::uint32_t kForBrowser = TRM_FOR_BROWSER;   // blob, files: top 12 bits 0x001

// Number display style (bits 20-21): 0 trims zeros, then %.Nf, %.Ne, %.Ng with the decimals.
inline constexpr std::uint32_t kNumberFixed = TRM_NUMBER_FIXED;
inline constexpr std::uint32_t kNumberExponent = TRM_NUMBER_EXPONENT;
inline constexpr std::uint32_t kNumberGeneral = TRM_NUMBER_GENERAL;

// Message icon (bits 16-18).
inline constexpr std::uint32_t kIconStop = TRM_ICON_STOP;
inline constexpr std::uint32_t kIconExclamation = TRM_ICON_EXCLAMATION;
inline constexpr std::uint32_t kIconQuestion = TRM_ICON_QUESTION;

// Date-time fields the editor offers.
inline constexpr std::uint32_t kFieldSecond = TRM_FIELD_SECOND;
inline constexpr std::uint32_t kFieldMinute = TRM_FIELD_MINUTE;
inline constexpr std::uint32_t kFieldHour = TRM_FIELD_HOUR;
inline constexpr std::uint32_t kFieldWeekday = TRM_FIELD_WEEKDAY;
inline constexpr std::uint32_t kFieldDay = TRM_FIELD_DAY;
inline constexpr std::uint32_t kFieldMonth = TRM_FIELD_MONTH;
inline constexpr std::uint32_t kFieldYear = TRM_FIELD_YEAR;

// Chart: the sample kind (bits 16-17), sample width (18-19), data width (20-21) and the number
// styles of sample labels (22-23) and data labels (24-25), the style values as above >> 20.
inline constexpr std::uint32_t kSamplesNone = TRM_SAMPLES_NONE;
inline constexpr std::uint32_t kSamplesNumeric = TRM_SAMPLES_NUMERIC;
inline constexpr std::uint32_t kSamplesLabels = TRM_SAMPLES_LABELS;
inline constexpr std::uint32_t kSamplesDateTime = TRM_SAMPLES_DATE_TIME;
inline constexpr std::uint32_t kSampleKindMask = TRM_SAMPLE_KIND_MASK;
inline constexpr std::uint32_t kSampleWidth16 = TRM_SAMPLE_WIDTH16;
inline constexpr std::uint32_t kSampleWidth8 = TRM_SAMPLE_WIDTH8;
inline constexpr std::uint32_t kSampleWidthMask = TRM_SAMPLE_WIDTH_MASK;
inline constexpr std::uint32_t kDataWidth16 = TRM_DATA_WIDTH16;
inline constexpr std::uint32_t kDataWidth8 = TRM_DATA_WIDTH8;
inline constexpr std::uint32_t kDataWidthNone = TRM_DATA_WIDTH_NONE;
inline constexpr std::uint32_t kDataWidthMask = TRM_DATA_WIDTH_MASK;
inline constexpr std::uint32_t kSampleStyleShift = TRM_SAMPLE_STYLE_SHIFT;
inline constexpr std::uint32_t kDataStyleShift = TRM_DATA_STYLE_SHIFT;

}  // namespace dev
