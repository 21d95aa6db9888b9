"""Audits drawings in pairs with ezdxf: for each line "ORIGINAL<TAB>MARKED" of the list given,
prints the errors of both audits and "MORE ERRORS" where the marked one has more.

usage: ezdxf_audit_pairs.py LIST
"""
import multiprocessing
import sys

import ezdxf
from ezdxf import recover


def audit(path):
    """The messages of ezdxf's audit; None when ezdxf cannot read the file at all."""
    try:
        try:
            doc = ezdxf.readfile(path)
        except ezdxf.DXFStructureError:
            doc, _ = recover.readfile(path)
        auditor = doc.audit()
    except Exception as e:  # ezdxf's own failures on drawings of other programs
        return None if 'marked_' not in path else ['ezdxf cannot read it: %r' % e]
    return [e.message for e in auditor.errors]


def main(listing):
    pairs = [line.rstrip('\n').split('\t') for line in open(listing, encoding='utf-8') if line.strip()]
    worse = unread = 0
    # Two processes: the audits of a few large drawings take most of the time.
    with multiprocessing.Pool(2) as pool:
        audits = pool.map(audit, [path for pair in pairs for path in pair])
    for k, (original, marked) in enumerate(pairs):
        before, after = audits[2 * k], audits[2 * k + 1]
        if before is None:
            unread += 1
            print('ezdxf cannot read\t%s' % original)
            continue
        added = [m for m in after if m not in before]
        if len(after) > len(before) or added:
            worse += 1
            print('MORE ERRORS\t%s\t%d -> %d\t%s' % (marked, len(before), len(after), ' | '.join(added[:3])))
    print('audited %d pairs, %d with more errors, %d originals ezdxf cannot read' % (len(pairs), worse, unread))


if __name__ == '__main__':
    main(sys.argv[1])
