// Numbers of the module's resources.
#pragma once

#define IDC_ROTATE_BASE 150
#define IDC_ROTATE_FREE 151
#define IDC_MOVE_IMAGE 153
#define IDC_AREA 9800
#define IDC_AREA_MOVE 9818
#define IDC_AREA_ADD 9821
#define IDC_AREA_SUBTRACT 9822
#define IDC_SELECT_RASTER 9823

// 8 by 8, as brushes of the frames.
#define IDB_SELECTION_PATTERN 139
#define IDB_RASTER_PATTERN 30000
#define IDB_PASTE_PATTERN 30001

// 32 by 32, for CAppCursor.
#define IDB_CURSOR_PEN 238
#define IDB_CURSOR_LINE 239
#define IDB_CURSOR_ERASER 240

// 24 by 24, beside the choices of the rotate dialog.
#define IDB_ROTATE_CLOCKWISE 145
#define IDB_ROTATE_COUNTER_CLOCKWISE 146
#define IDB_ROTATE_HALF 147
#define IDB_ROTATE_FREE 149

#define IDS_ROTATE_BASE_POINT 4910
#define IDS_ROTATE_CANCEL 4911
#define IDS_SAVE_RASTER_AS 17818
#define IDS_SAVE_SELECTION 17824

// The rotate dialog. The modes are a group of four buttons with numbers in a row.
#define IDD_ROTATE 148
#define IDC_ROTATE_MODE 1030
#define IDC_ROTATE_ONLY_SELECTION 1034

// The area tool's menu.
#define IDM_AREA 142
#define ID_AREA_COPY 32801
#define ID_AREA_PASTE 32802
#define ID_AREA_DELETE 32803
#define ID_AREA_CUT 32804
#define ID_AREA_INVERT 32821

// The paste tool's menu.
#define IDM_PASTE 116
#define ID_PASTE_TRANSPARENT 32808

// The free rotate tool's menu; its entry has the number of the menu.
#define IDM_ROTATE 122
#define ID_ROTATE_START 122
#define ID_ROTATE_TRANSPARENT 32824

// Raster menu.
#define ID_RASTER_INVERT 32812
#define ID_RASTER_FLIP_HORIZONTAL 32813
#define ID_RASTER_FLIP_VERTICAL 32814
#define ID_RASTER_DESPECKLE 32815
#define ID_RASTER_FILL 32816
#define ID_RASTER_CROP 32817
#define ID_RASTER_CHANGE 32818
#define ID_RASTER_PROPERTIES 32822
#define ID_RASTER_ROTATE 32823
#define ID_RASTER_RASTERIZE 32825
#define ID_RASTER_SHOW 32830
#define ID_RASTER_TRANSPARENT 32831
#define ID_RASTER_FRAMES 32832
