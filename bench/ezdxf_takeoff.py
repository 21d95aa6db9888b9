#!/usr/bin/python3
"""The takeoff aggregate scripted with ezdxf: the peer a user would otherwise write.

  ezdxf_takeoff.py DRAWING OUT

Reads the drawing, collects the records "TQ_STDINF01", ... of the sheet-number texts on
layer "5", applies the rules of tqstd for rows whose codes are stored (the copy-back of
the takeoff check, units, CI-NET pieces, material classes, the codes of the benchmark's
format) and writes the aggregate, comma-separated, in CP932 with CR LF.
"""
import sys

import ezdxf

CODES = ['S001', '&S501', 'SNET', 'SNAM', 'SSL0', 'SSW0', 'SSH0', 'SMAT', 'SPEC', '&SC01', '&SC03', '&SC04',
         '&SC05', '&SC06', 'S481', 'S304']
HEADERS = ['記号', '工事項目', 'CI-NETコード', '部材名', '寸法1', '寸法2', '寸法3', '材質', '仕様', '用途', '施工',
           '支給', '夜間', '内張', '摘要', '数量']
COLUMN_FIELDS = [1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 18, 19, 20, 21, 23, 22, 24]


def atof(text):
    text = text.strip()
    end = 0
    while end < len(text) and (text[end].isdigit() or text[end] in '+-.eE'):
        end += 1
    try:
        return float(text[:end]) if end else 0.0
    except ValueError:
        return 0.0


def atoi(text):
    text = text.strip()
    end = 1 if text[:1] in '+-' else 0
    while end < len(text) and text[end].isdigit():
        end += 1
    try:
        return int(text[:end])
    except ValueError:
        return 0


def fields(line):
    parts = line.split(',')
    if parts and parts[-1] == '':
        parts.pop()
    return (parts + [''] * 25)[:25]


def value(code, row, pieces, j, symbol):
    f = lambda p: row[p - 1]
    return {
        'S001': symbol, '&S501': f(3) or ' ', 'SNET': (pieces[j] if j < len(pieces) else f(19)) or ' ',
        'SNAM': f(6) or ' ', 'SSL0': f(7) or '0', 'SSW0': f(9) or '0', 'SSH0': f(11) or '0',
        'SMAT': f(13) or ' ', 'SPEC': f(14) or ' ', '&SC01': f(20) or ' ', '&SC03': f(21) or ' ',
        '&SC04': f(23) or ' ', '&SC05': f(22) or ' ', '&SC06': f(24) or ' ', 'S481': '',
        'S304': '%2.1f' % atof(f(15)),
    }[code]


def main(path, out):
    doc = ezdxf.readfile(path)
    entities = []
    for text in doc.modelspace().query('TEXT[layer=="5"]'):
        records, n = [], 1
        while text.has_xdata('TQ_STDINF%02d' % n):
            records.append([fields(tag.value) for tag in text.get_xdata('TQ_STDINF%02d' % n) if tag.code == 1000])
            n += 1
        if records:
            entities.append(records)
    # The takeoff check copies its list (forward order) back into the records walked backwards.
    for records in entities:
        items = [list(row) for record in records for row in record[2:]]
        k = 0
        for record in reversed(records):
            for row in record[2:]:
                for c, p in enumerate(COLUMN_FIELDS):
                    row[p - 1] = items[k][p - 1]
                k += 1
    merged, index, q = [], {}, CODES.index('S304')
    for records in entities:
        for record in reversed(records):
            units = atoi(record[3][0]) if len(record) >= 4 else 0
            if units <= 0:
                units = max([atoi(r[0]) for r in record] + [0]) if len(record) >= 4 else 0
            for _ in range(units):
                symbol = ''
                for i, row in enumerate(record):
                    if i == 2:
                        symbol = row[0]
                    a = row[3].upper() in ('A', '1')
                    excluded = row[3] == '' and row[7].upper() == 'A' and atof(row[6]) == 0
                    if atof(row[14]) == 0 or not (a or (row[3] == '' and not excluded)):
                        continue
                    pieces = row[18].split(' ')
                    for j in range(len(pieces)):
                        values = [value(c, row, pieces, j, symbol) for c in CODES]
                        key = tuple(values[:q] + values[q + 1:])
                        if key in index:
                            r = merged[index[key]]
                            r[q] = '%2.1f' % (atof(r[q]) + atof(values[q]))
                        else:
                            index[key] = len(merged)
                            merged.append(values)
    lines = [','.join(HEADERS) + ','] + [','.join(r) + ',' for r in merged]
    with open(out, 'wb') as f:
        f.write(''.join(line + '\r\n' for line in lines).encode('cp932', 'replace'))


if __name__ == '__main__':
    main(sys.argv[1], sys.argv[2])
