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

// Ten pictures of 16 by 15 in a row, those of the toolbar's buttons in their order; 0xC6C6C6 is see-through.
#define IDB_TOOLBAR 141
#define IDB_TOOLBAR_DISABLED 142

// The picture of splash and about box: 501 by 381, 256 colours.
#define IDB_SPLASH 102

// Beside the rows of the properties: root, row and group, 16 by 16 each.
#define IDB_PROPERTIES 213

// 16 by 16, for a pen's colour: the square is white in the first and black in the second.
#define IDB_SWATCH_PAINT 195
#define IDB_SWATCH_AND 196

#define IDS_ROTATE_BASE_POINT 4910
#define IDS_ROTATE_CANCEL 4911
#define IDS_CURRENT_RASTER 17723
#define IDS_FILE_NAME 17724
#define IDS_FILE_SIZE 17725
#define IDS_DOCUMENT_SIZE 17726
#define IDS_SIZE_IN_DRAWING 17727
#define IDS_WIDTH 17730
#define IDS_HEIGHT 17731
#define IDS_FILE_TYPE 17734
#define IDS_RESOLUTION 17735
#define IDS_COLORS 17736
#define IDS_RASTER_SIZE 17737
#define IDS_INSERTION_POINT 17738
#define IDS_INSERT_FILTER 17802
#define IDS_SAVE_RASTER_AS 17818
#define IDS_SAVE_SELECTION 17824
#define IDS_COLOR 17854
#define IDS_PAGE_ALTERED 17873
#define IDS_LINE_WIDTH 40016
#define IDS_CLOSE_TOOLBAR 40025
#define IDS_SAVE_CHANGES 57606

// The rotate dialog. The modes are a group of four buttons with numbers in a row.
#define IDD_ROTATE 148
#define IDC_ROTATE_MODE 1030
#define IDC_ROTATE_ONLY_SELECTION 1034

// "Pen attributes" and "Eraser size".
#define IDD_PEN 115
#define IDD_ERASER 259
#define IDC_BRUSH_WIDTH 1016
#define IDC_PEN_COLOR 1023
#define IDC_BRUSH_SPIN 1024
#define IDC_BRUSH_LENGTH 1026

// Size and resolution of the raster.
#define IDD_CHANGE_RASTER 143
#define IDC_CHANGE_WIDTH 1000
#define IDC_CHANGE_HEIGHT 1002
#define IDC_CHANGE_DPI 1005
#define IDC_CHANGE_CURRENT_WIDTH 1017
#define IDC_CHANGE_CURRENT_PAGE 1018
#define IDC_CHANGE_CURRENT_HEIGHT 1019
#define IDC_CHANGE_CURRENT_DPI 1020
#define IDC_CHANGE_PAGE 1066

// "Despeckles" and "Fill".
#define IDD_DESPECKLE 261
#define IDD_FILL 262
#define IDC_FILTER_LABEL 1013
#define IDC_FILTER_SIZE 1016
#define IDC_FILTER_ONLY_SELECTION 1088

// "Properties".
#define IDD_PROPERTIES 214
#define IDC_PROPERTIES_TREE 1110

// "Insert new raster" and "Insert raster".
#define IDD_NEW_RASTER 194
#define IDD_INSERT_RASTER 272
#define IDC_NEW_WIDTH 1000
#define IDC_NEW_HEIGHT 1002
#define IDC_NEW_DPI 1005
#define IDC_NEW_BROWSE 1046
#define IDC_PLACE_ZOOM 1057
#define IDC_PLACE_SAVE_PATH 1066
#define IDC_NEW_PAGE 1098
#define IDC_NEW_FILE 1140
#define IDC_PLACE_UNIT 1210
#define IDC_PLACE_SCALE 1211
#define IDC_PLACE_X 1212
#define IDC_PLACE_Y 1213
#define IDC_PLACE_SIZE 1214
#define IDC_PLACE_Z 1215

// "Rasterizing".
#define IDD_RASTERIZE 212
#define IDC_RASTERIZE_TO_FILE 3
#define IDC_RASTERIZE_FROM_FILE 4
#define IDC_RASTERIZE_PENS 1023
#define IDC_RASTERIZE_ONLY_SELECTION 1034
#define IDC_RASTERIZE_SAVE 1193

// "Settings".
#define IDD_SETTINGS 105
#define IDC_SETTINGS_LOAD_AT_START 1000
#define IDC_SETTINGS_LOAD_ON_DEMAND 1001
#define IDC_SETTINGS_UNLOAD 1002
#define IDC_SETTINGS_HIDE_TOOLBAR 1057

// The about box.
#define IDD_ABOUT 100
#define IDC_ABOUT_PRODUCT 1001
#define IDC_ABOUT_NOTICE 1002
#define IDC_ABOUT_VERSION 1108

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

// The toolbar: its template, and the bitmap that the class library loads with it. A button's texts are the string of
// its number.
#define IDR_TOOLBAR 29999
#define ID_TOOLBAR_FIRST 32795
#define ID_TOOLBAR_AREA 32795
#define ID_TOOLBAR_PEN 32797
#define ID_TOOLBAR_ERASER 32798
#define ID_TOOLBAR_LINE 32799
#define ID_TOOLBAR_SELECT 32800
#define ID_TOOLBAR_INSERT 32809
#define ID_TOOLBAR_RASTER 32810
#define ID_TOOLBAR_SETTINGS 40001
#define ID_TOOLBAR_ABOUT 40007
#define ID_TOOLBAR_SAVE_AS 40009
#define ID_TOOLBAR_NEW 59999
#define ID_TOOLBAR_LAST 59999

// The settings button's menu; its entries are ID_TOOLBAR_SETTINGS and ID_TOOLBAR_ABOUT.
#define IDM_SETTINGS 129

// Raster menu.
#define IDM_RASTER 121
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
