#pragma once
// Dialog units to pixels, the Windows way: a horizontal unit is a quarter of the dialog font's
// average character width, a vertical unit an eighth of its height.
namespace tq::dialog {

struct DialogBaseUnits {
  int averageCharWidth = 0;  // pixels
  int charHeight = 0;        // pixels: the font's tmHeight
};

// Windows' MulDiv: a * b / c in 64 bits, rounded half away from zero; -1 when c is 0 or the
// result does not fit in an int.
int MulDiv(int a, int b, int c);

// The average character width from the pixel width of
// "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz", rounded as Windows rounds it.
int AverageCharWidth(int widthOfAlphabet);

DialogBaseUnits BaseUnits(int widthOfAlphabet, int charHeight);

int DialogXToPixels(int x, const DialogBaseUnits& units);
int DialogYToPixels(int y, const DialogBaseUnits& units);

}  // namespace tq::dialog
