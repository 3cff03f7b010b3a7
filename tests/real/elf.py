"""The data objects of a 32-bit ELF object file: name -> bytes, relocation entries included."""
import struct


def objects(path):
    data = open(path, 'rb').read()
    offset, = struct.unpack_from('<I', data, 0x20)
    entry_size, count, _ = struct.unpack_from('<HHH', data, 0x2e)
    sections = [struct.unpack_from('<10I', data, offset + i * entry_size) for i in range(count)]
    table = next(s for s in sections if s[1] == 2)
    names = sections[table[6]]
    symbols = [struct.unpack_from('<IIIBBH', data, table[4] + i * 16) for i in range(table[5] // 16)]

    def text(at):
        start = names[4] + at
        return data[start:data.index(b'\0', start)].decode()

    relocations = {}
    for section in sections:
        if section[1] != 9:  # SHT_REL
            continue
        for i in range(section[5] // 8):
            where, info = struct.unpack_from('<II', data, section[4] + i * 8)
            relocations.setdefault(section[7], []).append((where, symbols[info >> 8]))
    result = {}
    for name, value, size, info, _, section in symbols:
        if info & 15 != 1 or section == 0 or section >= 0xff00:
            continue
        home = sections[section]
        content = bytes(size) if home[1] == 8 else data[home[4] + value:home[4] + value + size]
        targets = sorted(where - value for where, _ in relocations.get(section, ()) if value <= where < value + size)
        result[text(name)] = (content, targets)
    return result
