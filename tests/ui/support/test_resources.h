// Ids of the test template (test_resources.rc) that the user-interface tests and the test
// screenshot scenes build on.
#pragma once

#define IDD_HARNESS 200
#define IDD_PAGE_FIRST 210
#define IDD_PAGE_SECOND 211
#define IDD_PAGE_THIRD 212
#define IDM_TEST 220
#define IDA_TEST 230
#define IDB_WATERMARK 240
#define IDB_HEADER 241

#define IDC_NAME 1001
#define IDC_ASK 1002
#define IDC_REMEMBER 1003
#define IDC_LIST 1004
#define IDC_ANSWER 1005
#define IDC_PROGRESS 1006
#define IDC_PAGE_EDIT 1101

#define ID_CMD_OPEN 40001
#define ID_CMD_CLOSE 40002
#define ID_CMD_COLUMN 40003
#define ID_CMD_REFRESH 40004

#define IDS_CAPTION 300
#define IDS_QUESTION 301
#define IDS_NAME_MISSING 302
#define IDS_FILTER 303
#define IDS_SHEET 310
#define IDS_WIZARD 311
#define IDS_PAGE_FIRST 312
#define IDS_PAGE_SECOND 313
#define IDS_PAGE_THIRD 314
#define IDS_HEADER_TITLE 315
#define IDS_HEADER_SUBTITLE 316
#define IDS_COLUMN_MOUNT_POINT 320
#define IDS_COLUMN_CAPACITY 321
#define IDS_COLUMN_IMAGE_PATH 322
