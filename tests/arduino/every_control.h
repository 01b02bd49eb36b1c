// A sketch's panel with one control of every type, for the native tests and the fuzz target
// of the device library. Its variables are plain globals, as a sketch's are.
#pragma once

#include "Tremolanth.h"

namespace sketch {

enum Key : uint8_t {
    kName = 1,
    kBlink,
    kLamp,
    kSpeedLow,
    kSpeedHigh,
    kAlarm,
    kSetPoint,
    kTemperature,
    kLog,
    kMode,
    kData,
    kLogo,
    kReport,
    kTooHot,
    kAdvanced,
    kOffset,
    kService,
    kCalibrate,
};
constexpr uint8_t kControls = 17;  // every key but the Message

extern char name[12];
extern bool lamp;
extern uint8_t speed;
extern TrmDateTime wakeUp;
extern int32_t setPoint;
extern int32_t temperature;
extern TrmRing<int16_t, 2, 3, true> readings;
extern uint8_t mode;
extern uint8_t data[6];
extern bool advanced;
extern int32_t offset;
extern bool service;
extern bool calibrate;
extern char pin[TRM_PASSWORD_CHARS + 1];
extern const uint8_t kLogoBytes[4];
extern const char kReportText[];

// Back to the values the sketch starts with.
void Reset();
void Describe(TrmPanel& p);

}  // namespace sketch
