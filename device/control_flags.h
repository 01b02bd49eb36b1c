// Flag bits of a control record, as the device composes them. Which bits a type reads is noted
// beside each; the client ignores the bits a type does not read.
#pragma once

#include <cstdint>

namespace dev {

inline constexpr std::uint32_t kHidden = 0x1;           // every type: no row
inline constexpr std::uint32_t kUtf16 = 0x4;            // every text of the record is UTF-16LE
inline constexpr std::uint32_t kBringIntoView = 0x10;   // scroll to it when its layout changes
inline constexpr std::uint32_t kEditable = 0x10000;     // text, number, date-time: the user edits;
                                                        // check box: cannot be ticked; image:
                                                        // pressable; blob: its data is text;
                                                        // password: may be changed
inline constexpr std::uint32_t kMasked = 0x20000;       // text: shown as "*"
inline constexpr std::uint32_t kMinimumApplies = 0x20000;  // number
inline constexpr std::uint32_t kMaximumApplies = 0x40000;  // number
inline constexpr std::uint32_t kForBrowser = 0x00100000;   // blob, files: top 12 bits 0x001

// Number display style (bits 20-21): 0 trims zeros, then %.Nf, %.Ne, %.Ng with the decimals.
inline constexpr std::uint32_t kNumberFixed = 0x100000;
inline constexpr std::uint32_t kNumberExponent = 0x200000;
inline constexpr std::uint32_t kNumberGeneral = 0x300000;

// Message icon (bits 16-18).
inline constexpr std::uint32_t kIconStop = 0x20000;
inline constexpr std::uint32_t kIconExclamation = 0x30000;
inline constexpr std::uint32_t kIconQuestion = 0x40000;

// Date-time fields the editor offers.
inline constexpr std::uint32_t kFieldSecond = 0x20000;
inline constexpr std::uint32_t kFieldMinute = 0x40000;
inline constexpr std::uint32_t kFieldHour = 0x80000;
inline constexpr std::uint32_t kFieldWeekday = 0x100000;
inline constexpr std::uint32_t kFieldDay = 0x200000;
inline constexpr std::uint32_t kFieldMonth = 0x400000;
inline constexpr std::uint32_t kFieldYear = 0x800000;

// Chart: the sample kind (bits 16-17), sample width (18-19), data width (20-21) and the number
// styles of sample labels (22-23) and data labels (24-25), the style values as above >> 20.
inline constexpr std::uint32_t kSamplesNone = 0x00000;
inline constexpr std::uint32_t kSamplesNumeric = 0x10000;
inline constexpr std::uint32_t kSamplesLabels = 0x20000;
inline constexpr std::uint32_t kSamplesDateTime = 0x30000;
inline constexpr std::uint32_t kSampleKindMask = 0x30000;
inline constexpr std::uint32_t kSampleWidth16 = 0x40000;
inline constexpr std::uint32_t kSampleWidth8 = 0x80000;
inline constexpr std::uint32_t kSampleWidthMask = 0xC0000;
inline constexpr std::uint32_t kDataWidth16 = 0x100000;
inline constexpr std::uint32_t kDataWidth8 = 0x200000;
inline constexpr std::uint32_t kDataWidthNone = 0x300000;
inline constexpr std::uint32_t kDataWidthMask = 0x300000;
inline constexpr std::uint32_t kSampleStyleShift = 22;
inline constexpr std::uint32_t kDataStyleShift = 24;

}  // namespace dev
