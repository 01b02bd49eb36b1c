// A relay behind an HC-05 Bluetooth module on pins 10 (the module's TX) and 11 (its RX), at
// the module's 9600 baud; the board's USB serial stays free for messages.
#include <SoftwareSerial.h>
#include <Tremolanth.h>

enum : uint8_t { RELAY = 1, UPTIME };
const uint8_t RELAY_PIN = 7;

SoftwareSerial bluetooth(10, 11);
bool relay;
int32_t uptime;  // minutes

void describe(TrmPanel& p) {
  p.title(F("HC-05 Relay"));
  p.checkBox(RELAY, F("Relay"), relay);
  p.number(UPTIME, F("Up for"), uptime, F("%f min"));
}

Tremolanth device(bluetooth, describe);

void setup() {
  Serial.begin(115200);
  bluetooth.begin(9600);
  pinMode(RELAY_PIN, OUTPUT);
}

void loop() {
  if (device.poll() == RELAY) {
    digitalWrite(RELAY_PIN, relay);
    Serial.println(relay ? F("relay on") : F("relay off"));
  }
  if (TrmError e = device.error()) {
    Serial.print(F("unreadable input, code "));
    Serial.println(e);
  }
  if (millis() / 60000 != static_cast<uint32_t>(uptime)) {
    uptime = static_cast<int32_t>(millis() / 60000);
    device.send(UPTIME);
  }
}
