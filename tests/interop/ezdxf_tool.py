#!/usr/bin/python3
"""Independent evidence for the DXF backend, written with ezdxf (python3-ezdxf).

  ezdxf_tool.py write VERSION OUT.dxf   writes a drawing of every entity type the backend
                                        reads, with records on a sheet-number text
  ezdxf_tool.py read IN.dxf             prints what ezdxf reads, one entity a line, and
                                        the errors of its audit
  ezdxf_tool.py geometry IN.dxf X1 Y1 X2 Y2
                                        prints the model-space TEXTs whose insertion point
                                        and LINEs whose both ends lie in the window, and the
                                        errors of the audit

Output lines (fields separated by tabs; tab, newline and backslash escaped):
  E handle type layer colour text
  X handle application line
  A application                (a registered application)
  AUDIT errors fixes
Lines of geometry:
  T handle layer colour x y height width-factor halign valign text
  L handle layer colour linetype lineweight x1 y1 x2 y2
"""
import sys

import ezdxf
import re


def esc(s):
    s = re.sub(r'\\[Uu]\+([0-9A-Fa-f]{4})', lambda m: chr(int(m.group(1), 16)), str(s))
    return s.replace('\\', '\\\\').replace('\t', '\\t').replace('\n', '\\n')


LONG_LINE = ','.join(['SUS304 一般配管用ステンレス鋼鋼管 20A'] * 12)


def write(version, out):
    doc = ezdxf.new(version)
    if version in ('R12', 'R2004'):
        doc.encoding = 'cp932'  # written as $DWGCODEPAGE ANSI_932; R2000 stays ANSI_1252 and
                                # holds its Japanese text as \U+XXXX escapes
    for name, flags in (('5', 0), ('4', 0), ('枠', 0), ('凍結', 1), ('ロック', 4)):
        layer = doc.layers.new(name)
        if flags & 1:
            layer.freeze()
        if flags & 4:
            layer.lock()
    for app in ('TQ_STDINF01', 'TQ_STDINF02'):
        doc.appids.new(app)
    block = doc.blocks.new('VALVE', base_point=(5, 5))
    block.add_line((0, 0), (10, 10))
    block.add_circle((5, 5), 5)
    msp = doc.modelspace()
    msp.add_line((0, 0), (28000, 0), dxfattribs={'layer': '枠'})
    msp.add_line((100, 100), (200, 300), dxfattribs={'color': 3})
    msp.add_point((500, 600), dxfattribs={'layer': '4'})
    msp.add_circle((1000, 1000), 50, dxfattribs={'color': 0})
    msp.add_arc((2000, 1000), 100, 30, 120)
    msp.add_text('凍結された文字', dxfattribs={'layer': '凍結', 'insert': (10, 10), 'height': 100})
    msp.add_text('ロックされた文字', dxfattribs={'layer': 'ロック', 'insert': (20, 20), 'height': 100})
    t = msp.add_text('標準図-１２', dxfattribs={'layer': '5', 'insert': (26000, 1000), 'height': 350})
    t.set_xdata('TQ_STDINF01', [(1000, 'ヘッダ1'), (1000, 'ヘッダ2'),
                                (1000, 'AC-1,空調機,空調ダクト,,A,スパイラルダクト,300,,200,,,,SGCC,,2,本,,,,共通,,,,,'),
                                (1000, '')])
    t.set_xdata('TQ_STDINF02', [(1000, 'x'), (1002, '{'), (1000, LONG_LINE[:100]), (1000, LONG_LINE[100:]), (1002, '}')])
    if version != 'R12':
        msp.add_ellipse((3000, 1000), major_axis=(200, 0), ratio=0.5)
        msp.add_lwpolyline([(0, 0, 0, 0, 1), (100, 0, 0, 0, 0), (100, 100)], format='xyseb')
        msp.add_mtext('複数行\\P文字', dxfattribs={'insert': (4000, 1000), 'char_height': 100})
        msp.add_spline([(0, 0), (100, 200), (300, 100), (400, 400)])
        hatch = msp.add_hatch(color=2)
        hatch.paths.add_polyline_path([(5000, 0), (5100, 0), (5100, 100), (5000, 100)], is_closed=True)
    msp.add_polyline2d([(0, 0), (10, 0), (10, 10)], dxfattribs={'closed': True})
    msp.add_solid([(0, 0), (10, 0), (0, 10), (10, 10)])
    msp.add_3dface([(0, 0, 0), (10, 0, 0), (10, 10, 5), (0, 10, 5)])
    msp.add_blockref('VALVE', (6000, 1000), dxfattribs={'xscale': 2, 'yscale': 2, 'rotation': 90})
    doc.saveas(out)


def xdata_lines(entity):
    """The lines of each application: 1000 strings, those inside braces joined."""
    result = []
    if entity.xdata is None:
        return result
    for app, tags in entity.xdata.data.items():
        lines, depth, joined = [], 0, ''
        for tag in tags:
            if tag.code == 1002:
                if tag.value == '{':
                    if depth == 0:
                        joined = ''
                    depth += 1
                elif depth:
                    depth -= 1
                    if depth == 0:
                        lines.append(joined)
            elif tag.code == 1000:
                if depth:
                    joined += tag.value
                else:
                    lines.append(tag.value)
        result.append((app, lines))
    return result


def read(path):
    doc = ezdxf.readfile(path)
    for e in doc.entitydb.values():
        if e.dxftype() in ('BLOCK', 'ENDBLK', 'VERTEX', 'SEQEND', 'ATTRIB') or not hasattr(e.dxf, 'layer') or e.dxf.owner is None:
            continue
        if e.get_layout() is None or not e.get_layout().is_modelspace:
            continue
        text = e.dxf.text if e.dxftype() == 'TEXT' else ''
        print('\t'.join(['E', esc(e.dxf.handle), e.dxftype(), esc(e.dxf.layer), str(e.dxf.get('color', 256)), esc(text)]))
        for app, lines in xdata_lines(e):
            for line in lines:
                print('\t'.join(['X', esc(e.dxf.handle), esc(app), esc(line)]))
    for appid in doc.appids:
        print('\t'.join(['A', esc(appid.dxf.name)]))
    auditor = doc.audit()
    print('AUDIT\t%d\t%d' % (len(auditor.errors), len(auditor.fixes)))
    for error in auditor.errors:
        print('AUDIT-ERROR\t' + esc(error.message))


def geometry(path, x1, y1, x2, y2):
    doc = ezdxf.readfile(path)

    def inside(p):
        return x1 <= p[0] <= x2 and y1 <= p[1] <= y2

    for e in doc.modelspace():
        d = e.dxf
        colour = str(d.get('color', 256))
        if e.dxftype() == 'TEXT' and inside(d.insert):
            print('\t'.join(['T', d.handle, esc(d.layer), colour, repr(d.insert[0]), repr(d.insert[1]), repr(d.height),
                             repr(d.get('width', 1.0)), str(d.get('halign', 0)), str(d.get('valign', 0)), esc(d.text)]))
        elif e.dxftype() == 'LINE' and inside(d.start) and inside(d.end):
            print('\t'.join(['L', d.handle, esc(d.layer), colour, esc(d.get('linetype', '')), str(d.get('lineweight', -1)),
                             repr(d.start[0]), repr(d.start[1]), repr(d.end[0]), repr(d.end[1])]))
    auditor = doc.audit()
    print('AUDIT\t%d\t%d' % (len(auditor.errors), len(auditor.fixes)))
    for error in auditor.errors:
        print('AUDIT-ERROR\t' + esc(error.message))


if __name__ == '__main__':
    if sys.argv[1] == 'write':
        write(sys.argv[2], sys.argv[3])
    elif sys.argv[1] == 'read':
        read(sys.argv[2])
    elif sys.argv[1] == 'geometry':
        geometry(sys.argv[2], *map(float, sys.argv[3:7]))
    else:
        sys.exit('usage: ezdxf_tool.py write VERSION OUT | read IN')
