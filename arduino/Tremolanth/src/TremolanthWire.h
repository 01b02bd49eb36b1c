/* The numbers of the link between a device and the client: the frame marker and head, the
 * message types both ways, the record tags of a panel and the flag bits a record carries.
 * Everything on the wire is little-endian.
 *
 * One header for every side: the client, the PC device library and the microcontroller
 * library all take their numbers from here, so it stays plain C that a C++11 compiler for
 * an 8-bit board accepts as well. */
#ifndef TREMOLANTH_WIRE_H
#define TREMOLANTH_WIRE_H

/* The eight bytes that open every frame, in order. */
#define TRM_MARKER_0 0x48
#define TRM_MARKER_1 0xEF
#define TRM_MARKER_2 0xF0
#define TRM_MARKER_3 0x74
#define TRM_MARKER_4 0x72
#define TRM_MARKER_5 0xEF
#define TRM_MARKER_6 0xE6
#define TRM_MARKER_7 0x66
#define TRM_MARKER_BYTES                                                                     \
    TRM_MARKER_0, TRM_MARKER_1, TRM_MARKER_2, TRM_MARKER_3, TRM_MARKER_4, TRM_MARKER_5,      \
        TRM_MARKER_6, TRM_MARKER_7
#define TRM_MARKER_SIZE 8

/* The two header words after the marker: always sent, never checked. */
#define TRM_HEADER_WORD0 0x00000300UL
#define TRM_HEADER_WORD1 0x00010001UL
/* Marker, the two words, the 16-bit type and the 16-bit flags. */
#define TRM_FRAME_HEAD_SIZE 20

/* Header flags. */
#define TRM_FLAGS_OUTBOUND 0x0002u        /* on every frame the client sends */
#define TRM_FLAG_ACK_WANTED 0x0008u       /* types 6, 9, 16, 17: answer with type 14 */
#define TRM_FLAG_IDENTITY_UTF16 0x0001u   /* type 2: the panel name is UTF-16 */
#define TRM_FLAG_NO_PINGS 0x0002u         /* type 2: the client does not ping */
#define TRM_FLAG_NO_SESSION_B 0x0004u     /* type 2: clears the client's session flag B */
#define TRM_FLAG_STAY_OPEN 0x0010u        /* type 2: screens stay open after a disconnect */

/* Device to client. */
#define TRM_IN_SESSION_END 1
#define TRM_IN_IDENTITY 2
#define TRM_IN_SESSION_END_ALT 5
#define TRM_IN_PANEL 6
#define TRM_IN_PING 8
#define TRM_IN_VALUES 9
#define TRM_IN_PING_REPLY 11
#define TRM_IN_NOTICE 13
#define TRM_IN_RELOAD 15
#define TRM_IN_LAYOUT 16
#define TRM_IN_FILES 17
#define TRM_IN_SETTINGS 19

/* Client to device. */
#define TRM_OUT_PANEL_REQUEST 1
#define TRM_OUT_GOODBYE 4
#define TRM_OUT_VALUES 7
#define TRM_OUT_PING 10
#define TRM_OUT_PING_REPLY 12
#define TRM_OUT_ACK 14
#define TRM_OUT_DEFAULT_LAYOUT 18

/* Record tags: the first two bytes of a record body, an ASCII capital. */
#define TRM_TAG_BUTTON 'B'
#define TRM_TAG_DATE_TIME 'D'
#define TRM_TAG_FILES 'F'
#define TRM_TAG_CHECK_BOX 'G'
#define TRM_TAG_IMAGE 'I'
#define TRM_TAG_LIST 'L'
#define TRM_TAG_CHART 'M'
#define TRM_TAG_NUMBER 'N'
#define TRM_TAG_BLOB 'O'
#define TRM_TAG_PASSWORD 'P'
#define TRM_TAG_SECTION 'S'
#define TRM_TAG_TEXT 'T'
#define TRM_TAG_MESSAGE 'X'

/* Record flag bits. Which bits a type reads is noted beside each. */
#define TRM_HIDDEN 0x1UL               /* every type: no row */
#define TRM_UTF16 0x4UL                /* every text of the record is UTF-16LE */
#define TRM_BRING_INTO_VIEW 0x10UL     /* scroll to it when its layout changes */
#define TRM_EDITABLE 0x10000UL         /* text, number, date-time: the user edits; check box:
                                          cannot be ticked; image: pressable; blob: its data is
                                          text; password: may be changed */
#define TRM_MASKED 0x20000UL           /* text: shown as "*" */
#define TRM_MINIMUM_APPLIES 0x20000UL  /* number */
#define TRM_MAXIMUM_APPLIES 0x40000UL  /* number */
#define TRM_FOR_BROWSER 0x00100000UL   /* blob, files: the top 12 bits are 0x001 */

/* Number display style (bits 20-21): 0 trims zeros, then %.Nf, %.Ne, %.Ng with the decimals. */
#define TRM_NUMBER_FIXED 0x100000UL
#define TRM_NUMBER_EXPONENT 0x200000UL
#define TRM_NUMBER_GENERAL 0x300000UL

/* Message icon (bits 16-18). */
#define TRM_ICON_STOP 0x20000UL
#define TRM_ICON_EXCLAMATION 0x30000UL
#define TRM_ICON_QUESTION 0x40000UL
#define TRM_ICON_MASK 0x70000UL

/* Date-time fields the editor offers. */
#define TRM_FIELD_SECOND 0x20000UL
#define TRM_FIELD_MINUTE 0x40000UL
#define TRM_FIELD_HOUR 0x80000UL
#define TRM_FIELD_WEEKDAY 0x100000UL
#define TRM_FIELD_DAY 0x200000UL
#define TRM_FIELD_MONTH 0x400000UL
#define TRM_FIELD_YEAR 0x800000UL

/* Chart: the sample kind (bits 16-17), sample width (18-19), data width (20-21) and the number
 * styles of sample labels (22-23) and data labels (24-25). */
#define TRM_SAMPLES_NONE 0x00000UL
#define TRM_SAMPLES_NUMERIC 0x10000UL
#define TRM_SAMPLES_LABELS 0x20000UL
#define TRM_SAMPLES_DATE_TIME 0x30000UL
#define TRM_SAMPLE_KIND_MASK 0x30000UL
#define TRM_SAMPLE_WIDTH16 0x40000UL
#define TRM_SAMPLE_WIDTH8 0x80000UL
#define TRM_SAMPLE_WIDTH_MASK 0xC0000UL
#define TRM_DATA_WIDTH16 0x100000UL
#define TRM_DATA_WIDTH8 0x200000UL
#define TRM_DATA_WIDTH_NONE 0x300000UL
#define TRM_DATA_WIDTH_MASK 0x300000UL
#define TRM_SAMPLE_STYLE_SHIFT 22
#define TRM_DATA_STYLE_SHIFT 24

/* The update word of a layout update item (type 16). */
#define TRM_LAYOUT_HIDDEN 0x0001u
#define TRM_LAYOUT_BRING_INTO_VIEW 0x0010u
#define TRM_LAYOUT_BACKGROUND 0x0040u

/* Setting kinds of a settings message (type 19), by owner: 0 the panel, or a control key. */
#define TRM_SETTING_LAYOUT_MENU_LOCK 256
#define TRM_SETTING_PINGS_MENU_LOCK 512
#define TRM_SETTING_PING_SECONDS 768
#define TRM_SETTING_STYLE 336
#define TRM_SETTING_TITLE_LENGTH 448
#define TRM_SETTING_VALUE_SHOW 464
#define TRM_SETTING_FAST_KEY 480

/* Values of TRM_SETTING_VALUE_SHOW: how a row shows the value after the title. */
#define TRM_SHOW_PLAIN 0
#define TRM_SHOW_NONE 1
#define TRM_SHOW_SPACE 2
#define TRM_SHOW_COLON 3
#define TRM_SHOW_COLON_SPACE 4

/* The two fields of a password item: each 34 bytes, the text and its terminator. */
#define TRM_PASSWORD_FIELD 34

#endif /* TREMOLANTH_WIRE_H */
