#!/usr/bin/python3
"""Prints what ezdxf reads of a drawn size table: the audit's error count, then every TEXT and
every horizontal LINE whose start lies in the rectangle X1 Y1 X2 Y2.

Usage: ezdxf_size_table.py DRAWING X1 Y1 X2 Y2
"""
import sys

from ezdxf import recover


def main():
    path = sys.argv[1]
    x1, y1, x2, y2 = (float(v) for v in sys.argv[2:6])
    doc, auditor = recover.readfile(path)
    print('errors %d' % len(auditor.errors))
    inside = lambda p: x1 <= p.x <= x2 and y1 <= p.y <= y2
    msp = doc.modelspace()
    for text in msp.query('TEXT'):
        if inside(text.dxf.insert):
            print('text %s %g %g' % (text.dxf.text, text.dxf.height, text.dxf.get('width', 1.0)))
    for line in msp.query('LINE'):
        if inside(line.dxf.start) and line.dxf.start.y == line.dxf.end.y:
            print('row %g %g %g' % (line.dxf.start.y, line.dxf.start.x, line.dxf.end.x))


if __name__ == '__main__':
    main()
