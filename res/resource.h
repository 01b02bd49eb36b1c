// Resource ids of the program. Dialogs 107-121, menus 108-113, bitmaps 108 and 110, the icon
// 101; commands of the main window 106-107 and of the soft-key menus 40007-40031; controls
// 1000-1055 (ids are unique within one dialog, so a few numbers serve two dialogs).
#pragma once

// Icon
#define IDI_TREMOLANTH 101

// Dialogs
#define IDD_DEVICE_LIST 107
#define IDD_PANEL 108
#define IDD_STATIC_TEXT 109
#define IDD_EDIT_TEXT 110
#define IDD_MASKED_TEXT 111
#define IDD_PASSWORD_ENTRY 112
#define IDD_PASSWORD_CHANGE 113
#define IDD_ABOUT 114
#define IDD_PINGS 115
#define IDD_CONTROL_LAYOUT 116
#define IDD_DATA_TABLE 117
#define IDD_CHART 118
#define IDD_LIST_SELECTOR 119
#define IDD_DATE_TIME 120
#define IDD_FILE_NAME 121

// Soft-key menus
#define IDM_DEVICES 108      // main window and device list
#define IDM_DONE 109         // "Done" alone
#define IDM_PASSWORD 110     // "Log Out", "Change"
#define IDM_PANEL 111        // panel screen
#define IDM_CHART 112        // "Done", "Data" > "Table"
#define IDM_TABLE 113        // "Done", "Data" > the two CSV exports

// Bitmaps
#define IDB_ROW_IMAGES 108   // 22 images of 16x16 in one strip, pure green as the mask
#define IDB_SPARE 110        // loaded beside 108 and never used

// Commands of the main window and the device list
#define IDC_DONE_DEVICES 106
#define IDC_SCAN 107

// Commands of the soft-key menus
#define IDC_CONNECT 40007
#define IDC_DONE 40008
#define IDC_LOG_OUT 40016
#define IDC_CHANGE 40017
#define IDC_ABOUT 40021
#define IDC_PINGS 40022
#define IDC_CONTROL_LAYOUT 40023
#define IDC_DEFAULT_LAYOUT 40024
#define IDC_TABLE 40026
#define IDC_SAVE_CSV_COMMA 40030
#define IDC_SAVE_CSV_SEMICOLON 40031

// Controls: device list and panel screen
#define IDC_DEVICE_LIST 1000
#define IDC_STATUS_LINE 1001
#define IDC_PANEL_LIST 1002

// Controls: the editors' title and value, passwords
#define IDC_CONTROL_TITLE 1004
#define IDC_NEW_PASSWORD_LABEL 1005
#define IDC_NEW_PASSWORD_AGAIN_LABEL 1006
#define IDC_CONTROL_VALUE 1007
#define IDC_NEW_PASSWORD 1008
#define IDC_NEW_PASSWORD_AGAIN 1009
#define IDC_PASSWORD 1012

// Controls: About box, Pings dialog, Control Layout dialog
#define IDC_COMPILED 1014
#define IDC_PINGS_ENABLE 1014
#define IDC_PINGS_SECONDS 1015
#define IDC_LAYOUT_STYLE 1016
#define IDC_LAYOUT_TITLE_LENGTH 1017
#define IDC_LAYOUT_FAST_KEY 1018
#define IDC_LAYOUT_VALUE_SHOW 1019
#define IDC_LAYOUT_STYLE_SPIN 1022
#define IDC_LAYOUT_FAST_KEY_SPIN 1023
#define IDC_LAYOUT_VALUE_SHOW_SPIN 1024

// Controls: data table, list selector
#define IDC_TABLE_LIST 1023
#define IDC_SELECTOR_LIST 1024

// Controls: date-time editor
#define IDC_HOUR 1031
#define IDC_MINUTE 1032
#define IDC_HOUR_SPIN 1033
#define IDC_MINUTE_SPIN 1034
#define IDC_SECOND 1035
#define IDC_SECOND_SPIN 1036
#define IDC_DAY 1037
#define IDC_DAY_SPIN 1038
#define IDC_MONTH 1039
#define IDC_MONTH_SPIN 1040
#define IDC_YEAR 1041
#define IDC_YEAR_SPIN 1042
#define IDC_HOUR_LABEL 1043
#define IDC_MINUTE_LABEL 1044
#define IDC_SECOND_LABEL 1045
#define IDC_DAY_LABEL 1046
#define IDC_MONTH_LABEL 1047
#define IDC_YEAR_LABEL 1048
#define IDC_WEEKDAY 1051
#define IDC_WEEKDAY_SPIN 1052
#define IDC_WEEKDAY_LABEL 1053

// Controls: CSV file name
#define IDC_FILE_NAME 1055

#ifndef IDC_STATIC
#define IDC_STATIC (-1)
#endif
