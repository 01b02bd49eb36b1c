#include "tests/arduino/every_control.h"

#include <string.h>

namespace sketch {

char name[12];
bool lamp;
uint8_t speed;
TrmDateTime wakeUp;
int32_t setPoint;
int32_t temperature;
TrmRing<int16_t, 2, 3, true> readings;
uint8_t mode;
uint8_t data[6];
bool advanced;
int32_t offset;
bool service;
bool calibrate;
char pin[TRM_PASSWORD_CHARS + 1];
const uint8_t kLogoBytes[4] PROGMEM = {'B', 'M', 1, 2};
const char kReportText[] PROGMEM = "<p>ok</p>";

namespace {

bool CheckPin(const char* password, bool change) {
    if (change) {
        strncpy(pin, password, sizeof pin - 1);
        return true;
    }
    return strcmp(password, pin) == 0;
}

}  // namespace

void Reset() {
    strcpy(name, "Uno");
    lamp = false;
    speed = 0;
    wakeUp = TrmDateTime{0, 30, 7, 1, 2, 1, 2030};
    setPoint = 215;
    temperature = 198;
    readings = TrmRing<int16_t, 2, 3, true>{};
    mode = 1;
    memcpy(data, "abcde", 6);
    advanced = false;
    offset = 0;
    service = false;
    calibrate = false;
    strcpy(pin, "1234");
}

void Describe(TrmPanel& p) {
    p.title(F("Uno Test"));
    p.text(kName, F("Name"), name, sizeof name, TRM_EDITABLE);
    p.button(kBlink, F("Blink"));
    p.checkBox(kLamp, F("Lamp"), lamp);
    p.radio(kSpeedLow, F("Low"), speed, 0);
    p.radio(kSpeedHigh, F("High"), speed, 1);
    p.dateTime(kAlarm, F("Alarm"), wakeUp, F("%HH%:%mm%"));
    p.number(kSetPoint, F("Set point"), setPoint, 50, 300, F("%f °C"), -1);
    p.number(kTemperature, F("Temperature"), temperature, F("%f °C"), -1);
    p.table(kLog, F("Log"), readings, F("In|Out"), F("%f °C"), -1);
    p.list(kMode, F("Mode"), F("Off|Heat|Cool"), mode);
    p.blob(kData, F("Data"), data, sizeof data);
    p.image(kLogo, F("Logo"), kLogoBytes, sizeof kLogoBytes);
    p.files(kReport, F("Report"), F("report.html"), reinterpret_cast<const uint8_t*>(kReportText),
            sizeof kReportText - 1);
    p.message(kTooHot, F("Too hot!"), TRM_ICON_EXCLAMATION);
    p.section(kAdvanced, F("Advanced"), advanced);
    p.number(kOffset, F("Offset"), offset, -5, 5);
    p.password(kService, F("Service"), service, CheckPin);
    p.checkBox(kCalibrate, F("Calibrate"), calibrate);
}

}  // namespace sketch
