#!/usr/bin/python3
"""ezdxf reading and saving the same drawing: the peer a user would otherwise reach for."""
import sys
import time

import ezdxf

path, out = sys.argv[1], sys.argv[2]
start = time.perf_counter()
doc = ezdxf.readfile(path)
read = time.perf_counter() - start
start = time.perf_counter()
doc.saveas(out)
save = time.perf_counter() - start
print('ezdxf read %.3f s, save %.3f s' % (read, save))
