/* uno-sim FIRMWARE.elf: runs an Arduino Uno's firmware (atmega328p, 16 MHz) in simavr with its
 * serial port on a pseudo-terminal, so a client can talk to the board as to one on a USB cable.
 *
 * The first line of standard output is the pseudo-terminal's own name (/dev/pts/N); the
 * simulation then runs until the program is killed. Simulated time is held back to the wall
 * clock, so the firmware's millis() and serial pacing run as on a real board. */
#include "sim_avr.h"
#include "sim_elf.h"
#include "uart_pty.h"

#include <limits.h>
#include <stdio.h>
#include <string.h>
#include <time.h>
#include <unistd.h>

#define UNO_HZ 16000000UL

/* uart_pty also points a fixed link at the terminal; another run may take that name, so the
 * link is dropped when it is ours and the terminal is named by its own path. */
static void drop_fixed_link(const char* pty) {
    static const char link[] = "/tmp/simavr-uart0";
    char target[PATH_MAX];
    ssize_t n = readlink(link, target, sizeof target - 1);
    if (n <= 0) return;
    target[n] = 0;
    if (strcmp(target, pty) == 0) unlink(link);
}

static double now_seconds(void) {
    struct timespec t;
    clock_gettime(CLOCK_MONOTONIC, &t);
    return (double)t.tv_sec + (double)t.tv_nsec / 1e9;
}

int main(int argc, char** argv) {
    if (argc != 2) {
        fprintf(stderr, "usage: uno-sim FIRMWARE.elf\n");
        return 2;
    }
    /* simavr reports as it loads, on standard output: that goes to standard error, so the
     * first line of standard output is the terminal's name. */
    fflush(stdout);
    int out = dup(STDOUT_FILENO);
    dup2(STDERR_FILENO, STDOUT_FILENO);

    elf_firmware_t firmware;
    memset(&firmware, 0, sizeof firmware);
    if (elf_read_firmware(argv[1], &firmware) != 0) {
        fprintf(stderr, "uno-sim: cannot read %s\n", argv[1]);
        return 1;
    }
    strcpy(firmware.mmcu, "atmega328p");
    firmware.frequency = UNO_HZ;
    avr_t* avr = avr_make_mcu_by_name(firmware.mmcu);
    if (!avr) {
        fprintf(stderr, "uno-sim: simavr knows no atmega328p\n");
        return 1;
    }
    avr_init(avr);
    avr_load_firmware(avr, &firmware);
    avr->log = LOG_ERROR;

    static uart_pty_t uart;
    uart_pty_init(avr, &uart);
    uart_pty_connect(&uart, '0');
    drop_fixed_link(uart.pty.slavename);
    fflush(stdout);
    dup2(out, STDOUT_FILENO);
    close(out);
    printf("%s\n", uart.pty.slavename);
    fflush(stdout);
    dup2(STDERR_FILENO, STDOUT_FILENO); /* whatever simavr says later stays off it too */

    const double start = now_seconds();
    for (unsigned long steps = 0;; ++steps) {
        int state = avr_run(avr);
        if (state == cpu_Done || state == cpu_Crashed) {
            fprintf(stderr, "uno-sim: the firmware stopped (state %d)\n", state);
            return 1;
        }
        if (steps % 4096 == 0) {
            double ahead = (double)avr->cycle / UNO_HZ - (now_seconds() - start);
            if (ahead > 0.002) usleep((useconds_t)(ahead * 1e6));
        }
    }
}
