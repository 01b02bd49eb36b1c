// A live logger: two analog inputs sampled at an interval the client sets, kept in a ring of
// 24 rows that the client shows as a line chart and as a data table.
#include <Tremolanth.h>

enum : uint8_t { CHART = 1, TABLE, INTERVAL, CLEAR };

TrmRing<int16_t, 2, 24, true> readings;  // A0 and A1 in millivolts, sampled by the second
int32_t interval = 5;                     // seconds

void describe(TrmPanel& p) {
  p.title(F("Logger"));
  p.chart(CHART, F("Inputs"), readings, F("A0|A1"), F("%f mV"));
  p.table(TABLE, F("Readings"), readings, F("A0|A1"), F("%f mV"));
  p.number(INTERVAL, F("Interval"), interval, 1, 3600, F("%f s"));
  p.button(CLEAR, F("Clear"));
}

Tremolanth device(Serial, describe);
uint32_t lastSample;

int16_t millivolts(uint8_t pin) { return static_cast<int16_t>(analogRead(pin) * 5000L / 1023); }

void setup() {
  Serial.begin(115200);
}

void loop() {
  if (device.poll() == CLEAR) {
    readings = TrmRing<int16_t, 2, 24, true>();
    device.send(CHART);
    device.send(TABLE);
  }
  if (millis() - lastSample < static_cast<uint32_t>(interval) * 1000) return;
  lastSample = millis();
  readings.addSampled(static_cast<int16_t>(millis() / 1000), millivolts(A0), millivolts(A1));
  device.send(CHART);
  device.send(TABLE);
}
