// Commands that start a tool and return while it goes on by itself.
#pragma once

void SelectRasterCommand();
void SelectAreaCommand();
void PenCommand();
void LineCommand();
void EraserCommand();
