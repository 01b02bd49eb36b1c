// A thermostat with ten kinds of control: a set point within limits, the temperature it reads,
// a mode, an economy check box, a fan speed radio group, an alarm time, a section with the
// room's name, a message when it is too hot, and a service password guarding a calibration.
//
// The temperature is simulated: it creeps towards the set point while heating or cooling.
#include <Tremolanth.h>

enum : uint8_t { SET_POINT = 1, TEMPERATURE, MODE, ECO, FAN_LOW, FAN_HIGH, ALARM, ROOM_SECTION,
                 ROOM, TOO_HOT, SERVICE, CALIBRATION };
enum : uint8_t { OFF, HEAT, COOL, AUTO };

int32_t setPoint = 215;     // tenths of a degree
int32_t temperature = 190;
uint8_t mode = AUTO;
bool eco;
uint8_t fan;                // 0 low, 1 high
TrmDateTime alarm = {0, 30, 6, 1, 1, 1, 2024};
bool roomOpen;
char room[13] = "Living room";
bool service;
int32_t calibration;        // tenths of a degree added to the reading

bool checkService(const char* password, bool change) {
  return !change && strcmp(password, "2024") == 0;  // the code cannot be changed
}

void describe(TrmPanel& p) {
  p.title(F("Thermostat"));
  p.number(SET_POINT, F("Set point"), setPoint, 50, 300, F("%f °C"), -1);
  p.number(TEMPERATURE, F("Temperature"), temperature, F("%f °C"), -1);
  p.list(MODE, F("Mode"), F("Off|Heat|Cool|Auto"), mode);
  p.checkBox(ECO, F("Economy"), eco);
  p.radio(FAN_LOW, F("Fan low"), fan, 0);
  p.radio(FAN_HIGH, F("Fan high"), fan, 1);
  p.dateTime(ALARM, F("Wake up"), alarm, F("%HH%:%mm%"), TRM_EDITABLE | TRM_FIELD_HOUR | TRM_FIELD_MINUTE);
  p.section(ROOM_SECTION, F("Room"), roomOpen);
  p.text(ROOM, F("Name"), room, sizeof room, TRM_EDITABLE);
  p.message(TOO_HOT, F("Too hot: the thermostat switched to cooling."), TRM_ICON_EXCLAMATION);
  p.password(SERVICE, F("Service"), service, checkService);
  p.number(CALIBRATION, F("Calibration"), calibration, -50, 50, F("%f K"), -1);
}

Tremolanth device(Serial, describe);
uint32_t lastStep;

void setup() {
  Serial.begin(115200);
}

void loop() {
  device.poll();
  if (millis() - lastStep < 2000) return;
  lastStep = millis();
  int32_t target = setPoint - (eco ? 20 : 0);
  bool heat = (mode == HEAT || mode == AUTO) && temperature < target;
  bool cool = (mode == COOL || mode == AUTO) && temperature > target;
  temperature += heat ? 1 : cool ? -1 : 0;
  device.send(TEMPERATURE);
  if (temperature + calibration > 280 && mode != COOL) {
    mode = COOL;
    device.send(MODE);
    device.popup(TOO_HOT);
  }
}
