#pragma once

// Numbers of the desk's own resources and menu commands, away from those that modules bring along.
#define IDR_DESK 200

#define ID_DESK_FIRST 210
#define ID_DESK_NEW 210
#define ID_DESK_OPEN 211
#define ID_DESK_SAVE 212
#define ID_DESK_SAVE_AS 213
#define ID_DESK_LOAD_MODULE 214
#define ID_DESK_UNLOAD_MODULE 215
#define ID_DESK_EXIT 216
#define ID_DESK_UNDO 217
#define ID_DESK_REDO 218
#define ID_DESK_ERASE 219
#define ID_DESK_SELECT_ALL 220
#define ID_DESK_SELECT_NONE 221
#define ID_DESK_ZOOM_EXTENTS 222
#define ID_DESK_ZOOM_WINDOW 223
#define ID_DESK_ZOOM_PREVIOUS 224
#define ID_DESK_ZOOM_IN 225
#define ID_DESK_ZOOM_OUT 226
#define ID_DESK_PAN 227
#define ID_DESK_REGEN 228
#define ID_DESK_TOGGLE_SPACE 229
#define ID_DESK_DARK_GROUND 230
#define ID_DESK_LINE 231
#define ID_DESK_POLYLINE 232
#define ID_DESK_CIRCLE 233
#define ID_DESK_TEXT 234
#define ID_DESK_LIST 235
#define ID_DESK_HELP 236
#define ID_DESK_TRANSCRIPT 237
#define ID_DESK_LAST 237
