#!/usr/bin/python3
"""Writes examples/site/drawings/設備標準図.dxf, the example drawing of the sample installation.

A 3 x 3 grid of standard-drawing frames (28000 x 19800, the default frame size) as AutoCAD
R2004 saves it in a Japanese system (ANSI_932). Each frame holds a border, a title block,
drawn content (pipes, valves, ducts, hatches, a block), its sheet-number text on layer "5"
(two of them with full-width characters) and, for six of the nine, information records
"TQ_STDINF01", … built from the tables of examples/site. Two frames hold a drawn size table
with its placement base point on layer "4".

Run with python3-ezdxf: python3 examples/generate_example_drawing.py [OUT.dxf]
"""
import os
import sys

import ezdxf

W, H = 28000.0, 19800.0
HEADER1 = '番号,名称,工事項目,A材/別途,図記号,部材,寸法1,,寸法2,,寸法3,,材質,仕様,数量,呼称,属性,備考,CI-NET,用途,施工,夜間,支給,内張,B材キー'
HEADER2 = ','.join(str(i) for i in range(1, 26))


def line(*fields):
    """A record line: the fields as given (a short line stays short)."""
    return ','.join(fields)


def full(*fields):
    """A record line of exactly 25 fields."""
    fields = list(fields) + [''] * (25 - len(fields))
    return ','.join(fields[:25])


# Records by frame (row, column): a list of records, each a list of lines.
RECORDS = {
    (0, 0): [
        [HEADER1, HEADER2,
         full('AC-1', '空調機', '冷温水', 'A', '', '配管用炭素鋼鋼管', '50', 'A', '', '', '', '', 'SGP', '白', '4.5', 'm', '保温あり'),
         full('2', '', '冷温水', 'A', '', '配管用炭素鋼鋼管', '32', 'A', '', '', '', '', 'SGP', '白', '3.0', 'm'),
         full('', '', '冷温水', '', '', '吊りボルト', '10', '', '', '', '', '', 'SS400', 'M10', '6', '本'),
         full('', '', '冷温水', '', '', '保温材', '50', 'A', '', '', '', '', 'GW', 't=25', '7.5', 'm'),
         full('', '', '冷温水', '別途', '', '防振ゴム', '', '', '', '', '', '', '', '', '4', '個')],
        [HEADER1, HEADER2,
         full('FCU-1', 'ファンコイルユニット', '冷温水', 'A', '', '一般配管用ステンレス鋼鋼管', '20', 'Su', '', '', '', '', 'SUS304', 'JIS G 3448', '2.0', 'm'),
         full('3', '', '冷温水', 'A', '', '一般配管用ステンレス鋼鋼管', '20', 'Su', '', '', '', '', 'SUS304', 'JIS G 3448', '1.5', 'm'),
         full('', '', '冷温水', '', '', '支持金物', '', '', '', '', '', '', '', '', '3', '組')],
    ],
    (0, 1): [
        [HEADER1, HEADER2,
         full('P-1', '給水ポンプ', '給水', 'A', '', '配管用炭素鋼鋼管', '65', 'A', '', '', '', '', 'SGP', '白', '6.0', 'm', '', '', '21010101065000 21010101000000'),
         full('1', '', '給水', '1', '', '硬質ポリ塩化ビニル管', '50', 'A', '', '', '', '', 'VP', 'JIS K 6741', '2.5', 'm'),
         full('', '', '給水', '', '', '吊りボルト', '10', '', '', '', '', '', 'SS400', 'M10', '4', '本', '', '', '', '給水用'),
         full('', '', '給水', '', '', 'フランジ', '65', 'A', '', '', '', '', '', '', '2', '個')],
    ],
    (1, 0): [
        [HEADER1, HEADER2,
         full('EF-1', '送風機', '換気ダクト', 'A', '', 'スパイラルダクト', '200', 'φ', '', '', '', '', 'SGCC', '', '12.0', 'm'),
         full('1', '', '換気ダクト', 'a', '', '亜鉛鉄板製ダクト', '400', '', '300', '', '', '', 'SGCC', '0.5t', '8.0', 'm'),
         full('', '', '空調ダクト', '', '', '形鋼振れ止め', '300.5', '', '200', '', '', '', 'SS400', 'L-40x40x5', '2', '組'),
         full('', '', '換気ダクト', '', '', '吊りボルト', '0', 'a', '', '', '', '', 'SS400', 'M10', '8', '本'),
         full('', '', '換気ダクト', '', '', '吊りボルト', '12', '', '', '', '', '', 'SS400', 'M12', '0.0', '本')],
    ],
    (1, 2): [
        [HEADER1, HEADER2,
         full('AC-2', '空調機', '冷媒', 'A', '', '配管用炭素鋼鋼管', '25', 'A', '', '', '', '', 'SGP', '黒', '10.0', 'm'),
         full('1', '', '冷媒', 'A', '', '配管用炭素鋼鋼管', '25', 'A', '', '', '', '', 'SGP', '黒', '10.0', 'm'),
         full('', '', '冷媒', '', '', '保温材', '25', 'A', '', '', '', '', 'GW', 't=25', '10.0', 'm')],
    ],
    (2, 0): [
        [HEADER1, HEADER2,
         full('PL-1', '動力盤', '動力', 'A', '', 'CVケーブル', '8', 'sq', '', '', '', '', '', '600V', '25.0', 'm'),
         full('1', '', '動力', 'A', '', 'VVFケーブル', '2.0', 'mm', '', '', '', '', '', '600V', '15.0', 'm'),
         full('', '', '動力', '', '', '支持金物', '', '', '', '', '', '', '', '', '5', '組')],
    ],
    (2, 2): [
        # Older lines of fewer than 25 fields, as the first release of the suite wrote them.
        [HEADER1, HEADER2,
         line('D-1', '排気ダクト', '換気ダクト', 'A', '', 'スパイラルダクト', '150', 'φ', '', '', '', '', 'SGCC', '', '6.0', 'm', 'S040'),
         line('1', '', '換気ダクト', '', '', '吊りボルト', '10', '', '', '', '', '', 'SS400', 'M10', '3', '本', '保温なし'),
         line('', '', '換気ダクト', '', '', '形鋼振れ止め', '250'),
         line('', '', '換気ダクト', 'A', '', 'スパイラルダクト', '150', 'φ', '', '', '', '', 'SGCC', '', '2.0', 'm', 'S040', '曲がり部')],
    ],
}

SHEETS = {(0, 0): 'M-101', (0, 1): 'M-102', (0, 2): 'Ｍ－１０３', (1, 0): 'M-104', (1, 1): 'M-105',
          (1, 2): 'M-106', (2, 0): 'E-201', (2, 1): 'Ｅ－２０２', (2, 2): 'D-301'}
TITLES = {(0, 0): '空調機廻り配管詳細図', (0, 1): '給水ポンプ廻り配管詳細図', (0, 2): '冷却塔廻り配管詳細図',
          (1, 0): '送風機廻りダクト詳細図', (1, 1): 'ファンコイル廻り詳細図', (1, 2): '冷媒配管詳細図',
          (2, 0): '動力盤廻り配線詳細図', (2, 1): '照明器具取付詳細図', (2, 2): '排気ダクト詳細図'}
SIZE_TABLES = {(1, 1): [('FCU-1', ['20', '20', '15'], '4'), ('FCU-2', ['25', '20', '15'], '2')],
               (1, 2): [('AC-2', ['25', '15', ''], '1')]}


def frame(msp, row, col):
    x0, y0 = col * W, row * H
    msp.add_lwpolyline([(x0 + 200, y0 + 200), (x0 + W - 200, y0 + 200), (x0 + W - 200, y0 + H - 200),
                        (x0 + 200, y0 + H - 200)], close=True, dxfattribs={'layer': '枠'})
    # Title block at the lower right.
    tx, ty = x0 + W - 8200, y0 + 200
    msp.add_lwpolyline([(tx, ty), (tx + 8000, ty), (tx + 8000, ty + 2400), (tx, ty + 2400)], close=True,
                       dxfattribs={'layer': '枠'})
    msp.add_line((tx, ty + 1200), (tx + 8000, ty + 1200), dxfattribs={'layer': '枠'})
    msp.add_text(TITLES[(row, col)], dxfattribs={'layer': '文字', 'insert': (tx + 300, ty + 1600), 'height': 400})
    sheet = msp.add_text(SHEETS[(row, col)], dxfattribs={'layer': '5', 'insert': (tx + 5800, ty + 400), 'height': 500})
    for n, record in enumerate(RECORDS.get((row, col), []), start=1):
        sheet.set_xdata('TQ_STDINF%02d' % n, [(1000, text) for text in record])
    # Drawn content: a pipe run with valves, a duct, a block, a hatch, an arc, a note.
    px, py = x0 + 3000, y0 + 12000
    msp.add_line((px, py), (px + 12000, py), dxfattribs={'layer': '配管', 'color': 4})
    msp.add_line((px + 12000, py), (px + 12000, py - 5000), dxfattribs={'layer': '配管', 'color': 4})
    for k in range(3):
        msp.add_circle((px + 3000 + k * 3000, py), 250, dxfattribs={'layer': '配管'})
    msp.add_arc((px + 12000, py - 5000), 600, 180, 270, dxfattribs={'layer': '配管'})
    msp.add_blockref('VALVE', (px + 6000, py + 1500), dxfattribs={'layer': '配管', 'xscale': 20, 'yscale': 20})
    msp.add_lwpolyline([(x0 + 16000, y0 + 14000), (x0 + 24000, y0 + 14000, 0, 0, 0.4), (x0 + 24000, y0 + 17000)],
                       format='xyseb', dxfattribs={'layer': 'ダクト', 'color': 0})
    hatch = msp.add_hatch(color=8, dxfattribs={'layer': 'ダクト'})
    hatch.paths.add_polyline_path([(x0 + 16000, y0 + 17500), (x0 + 17000, y0 + 17500), (x0 + 17000, y0 + 18500),
                                   (x0 + 16000, y0 + 18500)], is_closed=True)
    msp.add_mtext('注記\\P配管は保温を施すこと', dxfattribs={'layer': '文字', 'insert': (x0 + 1000, y0 + 18800),
                                                     'char_height': 300})
    # A cable that crosses into the next frame: it belongs to neither.
    if col < 2:
        msp.add_line((x0 + W - 1000, y0 + 9000), (x0 + W + 1000, y0 + 9000), dxfattribs={'layer': '配線'})
    if (row, col) in SIZE_TABLES:
        size_table(msp, x0 + 2000, y0 + 7000, SIZE_TABLES[(row, col)])


def size_table(msp, bx, by, rows):
    """A drawn size table: a heading row, then the size rows, whose top line starts at the base
    point on layer 4 (the size dialog reads and redraws the rows below that line)."""
    columns = [0, 2200, 3400, 4600, 5800, 7000]
    pitch = 500
    heads = ['記号', '①', '②', '③', '台数']
    top = by + pitch
    bottom = by - pitch * len(rows)
    msp.add_point((bx, by), dxfattribs={'layer': '4'})
    for k, x in enumerate(columns):
        msp.add_line((bx + x, top), (bx + x, bottom), dxfattribs={'layer': '表'})
    for r in range(len(rows) + 2):
        msp.add_line((bx, top - r * pitch), (bx + columns[-1], top - r * pitch), dxfattribs={'layer': '表'})
    for k, head in enumerate(heads):
        msp.add_text(head, dxfattribs={'layer': '表', 'insert': (bx + columns[k] + 100, by + 100), 'height': 300})
    for r, (symbol, sizes, count) in enumerate(rows, start=1):
        y = by - r * pitch + 100
        msp.add_text(symbol, dxfattribs={'layer': '表', 'insert': (bx + 100, y), 'height': 300})
        for k, size in enumerate(sizes):
            if size:
                msp.add_text(size, dxfattribs={'layer': '表', 'insert': (bx + columns[k + 1] + 100, y), 'height': 300})
        msp.add_text(count, dxfattribs={'layer': '表', 'insert': (bx + columns[4] + 100, y), 'height': 300})


def main():
    doc = ezdxf.new('R2004')
    doc.encoding = 'cp932'
    for name, colour in (('5', 7), ('4', 1), ('枠', 7), ('文字', 7), ('配管', 4), ('ダクト', 3), ('配線', 6), ('表', 7)):
        doc.layers.new(name, dxfattribs={'color': colour})
    doc.appids.new('TQ_STDINF01')
    doc.appids.new('TQ_STDINF02')
    valve = doc.blocks.new('VALVE', base_point=(0, 0))
    valve.add_lwpolyline([(-10, -5), (10, 5), (10, -5), (-10, 5)], close=True)
    valve.add_line((0, 0), (0, 12))
    msp = doc.modelspace()
    for row in range(3):
        for col in range(3):
            frame(msp, row, col)
    out = sys.argv[1] if len(sys.argv) > 1 else \
        os.path.join(os.path.dirname(os.path.abspath(__file__)), 'site', 'drawings', '設備標準図.dxf')
    doc.saveas(out)
    print(out)


if __name__ == '__main__':
    main()
