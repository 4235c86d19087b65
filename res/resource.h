// Resource ids of the program: resources, commands, string-table entries and the child
// windows of the main frame. Plain macros, read by the resource compiler and by C++.
//
// A command id is also the id of its string, which holds the status-bar prompt and, after
// "\n", the tool tip.
#pragma once

// The main frame: its menu, accelerator table, title string and icon.
#define IDR_MAINFRAME 100

// Bitmaps: toolbar images (32-bit, 256 colours with magenta as the transparent colour),
// menu images (the same two kinds), and the wizard's watermark and header.
#define IDB_TOOLBAR32 100
#define IDB_TOOLBAR8 101
#define IDB_MENU32 102
#define IDB_MENU8 103
#define IDB_WIZARD_WATERMARK 104
#define IDB_WIZARD_HEADER 105

// The toolbar resource that names the command of each menu image, in image order.
#define IDR_MENU_IMAGES 102

// The icon of the on-screen keyboard button.
#define IDI_KEYBOARD 164
// The icon of image files, shown for .qvi files by the association the installer makes.
#define IDI_IMAGE_FILE 165

// The mounted disk list's own context menu.
#define IDR_DISK_CONTEXT_MENU 155

// Dialog templates.
#define IDD_MOUNT 101
#define IDD_WIZARD_WELCOME 108
#define IDD_WIZARD_LOCATION 109
#define IDD_WIZARD_ENCRYPTION 112
#define IDD_WIZARD_CAPACITY 114
#define IDD_WIZARD_PASSWORD 117
#define IDD_WIZARD_PROGRESS 123
#define IDD_WIZARD_COMPLETION 125
#define IDD_SET_PASSWORD 129
#define IDD_PROPERTIES 131
#define IDD_CLEAR_IMAGE 135
#define IDD_CLEAR_PROGRESS 138
#define IDD_OPTIONS_GENERAL 156
#define IDD_OPTIONS_MONITOR 158

// Controls of the dialogs. The image path, its Browse button and the password field have
// the same ids in every dialog that asks for an image.
#define IDC_IMAGE_PATH 1005
#define IDC_BROWSE 1006
#define IDC_PASSWORD 1007
// The mount dialog's own controls.
#define IDC_MOUNT_KEYBOARD 1001
#define IDC_MOUNT_INVISIBLE 1008
#define IDC_MOUNT_POINT 1011
#define IDC_MOUNT_READ_ONLY 1012
#define IDC_MOUNT_REMOVABLE 1013
// The properties dialog's value fields.
#define IDC_PROPERTY_MOUNT_POINT 1000
#define IDC_PROPERTY_CAPACITY 1001
#define IDC_PROPERTY_ALGORITHM 1005
#define IDC_PROPERTY_KEY_LENGTH 1006
#define IDC_PROPERTY_READ_ONLY 1009
#define IDC_PROPERTY_IMAGE_PATH 1010
#define IDC_PROPERTY_REMOVABLE 1011
#define IDC_PROPERTY_CREATED 1012
#define IDC_PROPERTY_FIXED_SIZE 1013
#define IDC_PROPERTY_FAT_COMPATIBLE 1014
#define IDC_PROPERTY_MOUNTED 1015

// Commands of the menu, the toolbar, the accelerators and the list's context menu.
#define ID_FILE_NEW_IMAGE 40000
#define ID_FILE_MOUNT_IMAGE 40001
#define ID_FILE_DISMOUNT 40002
#define ID_FILE_DISMOUNT_ALL 40003
#define ID_TOOLS_OPTIONS 40009
#define ID_FILE_SET_PASSWORD 40104
#define ID_EDIT_SELECT_ALL 40106
#define ID_EDIT_PROPERTIES 40107
#define ID_TOOLS_CLEAR_IMAGE 40108
#define ID_HELP_HOME_PAGE 40123
#define ID_VIEW_COLUMN_MOUNT_POINT 40304
#define ID_VIEW_COLUMN_CAPACITY 40305
#define ID_VIEW_COLUMN_IMAGE_PATH 40306
#define ID_VIEW_COLUMN_CREATED 40307
#define ID_VIEW_COLUMN_MOUNTED 40308
#define ID_HELP_TOPICS 40310
#define ID_HELP_ABOUT 40314
#define ID_VIEW_COLUMN_ALGORITHM 40315
#define ID_VIEW_COLUMN_FREE_SPACE 40316
#define ID_DISK_BROWSE 40317
#define ID_FILE_MRU_FIRST 57616
#define ID_FILE_MRU_LAST 57631
#define ID_APP_EXIT 57665
#define ID_VIEW_REFRESH 59395

// Child windows of the main frame and the first id of its rebar bands.
#define IDW_REBAR 59392
#define IDW_STATUS_BAR 59393
#define IDW_BAND_FIRST 60160

// The status bar's idle text (the bar stays empty while the table has no such entry).
#define IDS_IDLE_MESSAGE 57345

// Strings.
#define IDS_TOOLBAR_TEXTS 40004
#define IDS_IMAGE_FILE_FILTER 40006
#define IDS_CANNOT_MOUNT_CAPTION 40007
#define IDS_CANNOT_MOUNT 40008
#define IDS_OPEN_ACCESS_DENIED 40010
#define IDS_OPEN_WRONG_PASSWORD 40012
#define IDS_OPEN_VOLUME_MISSING 40013
#define IDS_NO_DRIVER_CONNECTION 40014
#define IDS_DISK_IN_USE 40016
#define IDS_WARNING_CAPTION 40017
#define IDS_OPERATION_FAILED 40018
#define IDS_CANNOT_DISMOUNT_CAPTION 40019
#define IDS_DISKS_IN_USE 40020
#define IDS_WIZARD_CAPTION 40021
#define IDS_YES 40022
#define IDS_NO 40023
#define IDS_UNIT_TB 40024
#define IDS_UNIT_MB 40025
#define IDS_UNIT_GB 40026
#define IDS_KEY_BITS 40027
#define IDS_ALGORITHM_AES 40028
#define IDS_ALGORITHM_BLOWFISH 40029
#define IDS_ALGORITHM_CAST 40030
#define IDS_ENTER_PASSWORD 40031
#define IDS_PASSWORD_MISMATCH 40032
#define IDS_INVALID_PASSWORD_CAPTION 40033
#define IDS_ENTER_IMAGE_PATH 40034
#define IDS_ERROR_CAPTION 40035
#define IDS_INVALID_PATH_CAPTION 40036
#define IDS_CANNOT_PREPARE_FOLDER 40037
#define IDS_FULL_PATH_NEEDED 40038
#define IDS_ONE_DAY 40039
#define IDS_DAYS 40040
#define IDS_ONE_HOUR 40041
#define IDS_CREATE_ACCESS_DENIED 40042
#define IDS_CREATE_WRITE_FAULT 40043
#define IDS_CREATE_DISK_FULL 40044
#define IDS_CREATE_NO_PRIVILEGE 40045
#define IDS_CANNOT_CHANGE_PASSWORD 40046
#define IDS_CANNOT_CHANGE_PASSWORD_CAPTION 40047
#define IDS_NEEDS_FORMATTING_CAPTION 40048
#define IDS_FORMAT_DISK_NOW 40049
#define IDS_OPTIONS_CAPTION 40050
#define IDS_CLEAR_TAKES_LONG 40051
#define IDS_HOURS 40052
#define IDS_ONE_MINUTE 40053
#define IDS_MINUTES 40054
#define IDS_ONE_SECOND 40055
#define IDS_SECONDS 40056
#define IDS_CANCEL_CLEAR 40057
#define IDS_HOT_KEY_TAKEN 40058
#define IDS_CANNOT_START_MONITOR 40059
#define IDS_CANNOT_START_DRIVER 40073
#define IDS_LOCATION_TITLE 40074
#define IDS_LOCATION_SUBTITLE 40075
#define IDS_CAPACITY_TITLE 40076
#define IDS_CAPACITY_SUBTITLE 40077
#define IDS_ENCRYPTION_TITLE 40078
#define IDS_ENCRYPTION_SUBTITLE 40079
#define IDS_PASSWORD_TITLE 40080
#define IDS_PASSWORD_SUBTITLE 40081
#define IDS_PROGRESS_TITLE 40082
#define IDS_PROGRESS_SUBTITLE 40083
#define IDS_COLUMN_MOUNT_POINT 40086
#define IDS_COLUMN_CAPACITY 40087
#define IDS_COLUMN_FREE_SPACE 40088
#define IDS_COLUMN_IMAGE_PATH 40089
#define IDS_COLUMN_ALGORITHM 40090
#define IDS_COLUMN_CREATED 40091
#define IDS_COLUMN_MOUNTED 40092
#define IDS_ALGORITHM_UNKNOWN 40093
#define IDS_CLEAR_FAILED 40094
#define IDS_IMAGE_CLEARED 40095
#define IDS_OPERATION_COMPLETE_CAPTION 40096
#define IDS_PASSWORD_CHANGED 40097
#define IDS_CREATING_FILE_SYSTEM 40103

// Controls of the options sheet's General and Monitor pages.
#define IDC_OPTION_HOT_KEY_TEXT 1000
#define IDC_OPTION_HOT_KEY_LABEL 1001
#define IDC_OPTION_AUTOSTART 1003
#define IDC_OPTION_PRIVACY 1005
#define IDC_OPTION_INVISIBLE 1008
#define IDC_OPTION_IGNORE_OPEN_FILES 1009
#define IDC_OPTION_ENABLE_MONITOR 1010
#define IDC_OPTION_UNLOAD_MONITOR 1011
#define IDC_OPTION_HOT_KEY 1012
#define IDC_OPTION_REMOVABLE 1013

// Controls of the change-password, clear and clearing progress dialogs.
#define IDC_CONFIRM_PASSWORD 1000
#define IDC_CLEAR_PROGRESS_BAR 1001
#define IDC_NEW_PASSWORD 1002
#define IDC_REMAINING_TIME 1002
#define IDC_WARNING_ICON 1009
#define IDC_WARNING_TEXT 1010
