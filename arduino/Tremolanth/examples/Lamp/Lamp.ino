// The board's LED as a lamp the client switches, and a button that toggles it.
#include <Tremolanth.h>

bool lamp;
void describe(TrmPanel& p) {
  p.title(F("Lamp"));
  p.checkBox(1, F("Lamp"), lamp);
  p.button(2, F("Toggle"));
}
Tremolanth device(Serial, describe);

void setup() { Serial.begin(115200); pinMode(LED_BUILTIN, OUTPUT); }
void loop() {
  uint8_t key = device.poll();
  if (key == 2) { lamp = !lamp; device.send(1); }
  if (key) digitalWrite(LED_BUILTIN, lamp);
}
