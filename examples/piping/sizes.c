#include "sizes.h"

#include <math.h>
#include <stddef.h>

typedef struct SizeRow {
  double inches;  /* NPS */
  double dn;      /* the same size in millimetres, as it is called */
  double outside; /* ASME B36.10M, mm */
  double flange;  /* ASME B16.5 class 150, mm; 0: not in that standard */
} SizeRow;

/* clang-format off */
static const SizeRow kSizes[] = {
    {0.125,    6,   10.3,    0},
    {0.25,     8,   13.7,    0},
    {0.375,   10,   17.1,    0},
    {0.5,     15,   21.3,   90},
    {0.75,    20,   26.7,  100},
    {1,       25,   33.4,  110},
    {1.25,    32,   42.2,  115},
    {1.5,     40,   48.3,  125},
    {2,       50,   60.3,  150},
    {2.5,     65,   73.0,  180},
    {3,       80,   88.9,  190},
    {3.5,     90,  101.6,  215},
    {4,      100,  114.3,  230},
    {5,      125,  141.3,  255},
    {6,      150,  168.3,  280},
    {8,      200,  219.1,  345},
    {10,     250,  273.0,  405},
    {12,     300,  323.8,  485},
    {14,     350,  355.6,  535},
    {16,     400,  406.4,  595},
    {18,     450,  457.0,  635},
    {20,     500,  508.0,  700},
    {22,     550,  559.0,    0},
    {24,     600,  610.0,  815},
    {26,     650,  660.0,    0},
    {28,     700,  711.0,    0},
    {30,     750,  762.0,    0},
    {32,     800,  813.0,    0},
    {34,     850,  864.0,    0},
    {36,     900,  914.0,    0},
    {38,     950,  965.0,    0},
    {40,    1000, 1016.0,    0},
    {42,    1050, 1067.0,    0},
    {44,    1100, 1118.0,    0},
    {46,    1150, 1168.0,    0},
    {48,    1200, 1219.0,    0},
};
/* clang-format on */

/* Sizes that the flange standard does not list are drawn a little wider than
   the pipe. */
static double flangeOf(double outside, double listed) {
  return listed > outside ? listed : outside * 1.3 + 20;
}

PipeSize pipeSize(double bore, int inches) {
  PipeSize size = {0, bore, flangeOf(bore, 0)};
  for (size_t i = 0; i < sizeof kSizes / sizeof kSizes[0]; ++i) {
    const SizeRow* row = &kSizes[i];
    const double nominal = inches ? row->inches * 25.4 : row->dn;
    /* Files round 1.25 inch to 1.3 now and then, but never DN 15 to 15.3. */
    if (fabs(bore - nominal) > (inches ? 0.06 * 25.4 : 0.01)) continue;
    /* The small sizes lie closer together than that rounding. */
    if (inches && row->inches < 1 && fabs(bore - nominal) > 0.01 * 25.4) continue;
    size.known = 1;
    size.outside = row->outside;
    size.flange = flangeOf(row->outside, row->flange);
    return size;
  }
  return size;
}
