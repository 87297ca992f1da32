// The keyword list: a walk over packed items.
#include "fileio/kwlist.h"

#include "zuvsys/basicstr.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <optional>

namespace norva {

static_assert(std::endian::native == std::endian::little, "numbers in the list are copied as they stand");

namespace {

// A walk stands at a byte of the block. Sizes are signed: 0 is the end of the list, and so is an item of more
// than 127 bytes, whose size reads negative.
int size_at(std::span<const char> buf, std::size_t pos) {
    if (pos >= buf.size()) return 0;
    auto size = static_cast<signed char>(buf[pos]);
    return size > 0 ? size : 0;
}

// Bytes of the block that items may take; the last byte is kept for the end of the list.
std::size_t room(std::span<const char> buf) {
    return buf.empty() ? 0 : buf.size() - 1;
}

// Where item indx starts; nothing when the list ends before it.
std::optional<std::size_t> position(std::span<const char> buf, int indx) {
    if (indx < 0) return std::nullopt;
    std::size_t pos = 0;
    while (int size = size_at(buf, pos)) {
        if (indx-- == 0) return pos;
        pos += static_cast<std::size_t>(size);
    }
    return std::nullopt;
}

// Where the list ends: the place of the next item, which may lie behind the block when the last item does.
std::size_t list_end(std::span<const char> buf) {
    std::size_t pos = 0;
    while (int size = size_at(buf, pos)) pos += static_cast<std::size_t>(size);
    return pos;
}

// Text from `first` on, up to its NUL, the end of the item, or the limit.
std::string text_of(std::span<const char> item, std::size_t first, std::size_t limit) {
    std::string_view rest(item.data() + first, std::min(item.size() - first, limit));
    return std::string(rest.substr(0, rest.find('\0')));
}

constexpr std::size_t value_size(int type) {
    return type == KW_INT ? 4 : 8;
}

// The parts of an item whose bytes are in hand. False when its type is unknown or the parts do not fit.
bool unpack(std::span<const char> bytes, kwl_item& item) {
    if (bytes.size() < 3) return false;
    int type = static_cast<signed char>(bytes[1]);
    std::size_t name_at = 0;
    if (type == KW_INT || type == KW_DOUBLE) {
        name_at = 2 + value_size(type);
    } else if (type == KW_STRING) {
        auto length = static_cast<signed char>(bytes[2]);
        if (length < 1) return false;
        name_at = 3 + static_cast<std::size_t>(length);
    } else {
        return false;
    }
    if (name_at >= bytes.size()) return false;

    item.type = type;
    item.name = text_of(bytes, name_at, KW_MAX_NAME);
    if (type == KW_INT) std::memcpy(&item.ival, &bytes[2], 4);
    if (type == KW_DOUBLE) std::memcpy(&item.dval, &bytes[2], 8);
    if (type == KW_STRING) item.sval = text_of(bytes.first(name_at), 3, name_at - 3);
    return true;
}

// The item that starts at pos: as kwl_read.
int read_at(std::span<const char> buf, std::size_t pos, kwl_item& item) {
    item = {};
    auto size = static_cast<std::size_t>(size_at(buf, pos));
    if (size == 0) return -1;
    if (size > 1 && pos + size <= room(buf) && unpack(buf.subspan(pos, size), item)) return 1;
    item = {};
    return 0;
}

// Calls use(item, indx, pos) for each item, malformed ones left out, until it returns true.
template <class Buffer, class Use> void walk(Buffer buf, Use use) {
    kwl_item item;
    std::size_t pos = 0;
    for (int indx = 0;; indx++) {
        int outcome = read_at(buf, pos, item);
        if (outcome == -1 || (outcome == 1 && use(item, indx, pos))) return;
        pos += static_cast<std::size_t>(size_at(buf, pos));
    }
}

// The first item of that name, of any type when type is 0. Its index, or -1 with a cleared item.
int find(std::span<const char> buf, std::string_view name, int type, kwl_item& found) {
    std::string wanted(name);
    int at = -1;
    found = {};
    walk(buf, [&](const kwl_item& item, int indx, std::size_t) {
        if ((type != 0 && item.type != type) || strcmpx(item.name.c_str(), wanted.c_str()) != 0) return false;
        at = indx;
        found = item;
        return true;
    });
    return at;
}

// An item ready to be written: size and type, the value part, the name and its NUL.
std::string pack(int type, std::string_view value, std::string_view name) {
    std::string item(2, '\0');
    item.append(value);
    item.append(name);
    item += '\0';
    item[0] = static_cast<char>(std::min<std::size_t>(item.size(), 255));
    item[1] = static_cast<char>(type);
    return item;
}

// Text up to its first NUL, cut.
std::string_view cut(std::string_view text, std::size_t limit) {
    return text.substr(0, std::min(limit, text.find('\0')));
}

int put(std::span<char> buf, int type, std::string_view value, std::string_view name) {
    name = cut(name, KW_MAX_NAME);
    if (name.empty()) return 0;
    std::string item = pack(type, value, name);
    int old = kwl_find(buf, name);
    std::size_t freed = old < 0 ? 0 : static_cast<std::size_t>(size_at(buf, *position(buf, old)));
    if (list_end(buf) - freed + item.size() > room(buf)) return 0;

    if (old >= 0) kwl_delete(buf, old);
    std::size_t end = list_end(buf);
    std::copy(item.begin(), item.end(), buf.begin() + static_cast<std::ptrdiff_t>(end));
    buf[end + item.size()] = '\0';
    return 1;
}

} // namespace

void kwl_init(std::span<char> buf) {
    std::fill(buf.begin(), buf.end(), '\0');
}

int kwl_read(std::span<const char> buf, int indx, kwl_item& item) {
    item = {};
    std::optional<std::size_t> pos = position(buf, indx);
    return pos ? read_at(buf, *pos, item) : -1;
}

int kwl_tell(std::span<const char> buf, int indx) {
    kwl_item item;
    return kwl_read(buf, indx, item) == 1 ? static_cast<int>(*position(buf, indx)) : -1;
}

int kwl_nitems(std::span<const char> buf) {
    kwl_item item;
    std::size_t pos = 0;
    int n = 0;
    for (; read_at(buf, pos, item) == 1; n++) pos += static_cast<std::size_t>(size_at(buf, pos));
    return n;
}

int kwl_find(std::span<const char> buf, std::string_view name) {
    kwl_item item;
    return find(buf, name, 0, item);
}

int kwl_get_int(std::span<const char> buf, std::string_view name, int& value) {
    kwl_item item;
    int found = find(buf, name, KW_INT, item);
    value = item.ival;
    return found >= 0;
}

int kwl_get_dbl(std::span<const char> buf, std::string_view name, double& value) {
    kwl_item item;
    int found = find(buf, name, KW_DOUBLE, item);
    value = item.dval;
    return found >= 0;
}

int kwl_get_str(std::span<const char> buf, std::string_view name, std::string& value) {
    kwl_item item;
    int found = find(buf, name, KW_STRING, item);
    value = item.sval;
    return found >= 0;
}

int kwl_put_int(std::span<char> buf, std::string_view name, int value) {
    char bytes[4];
    std::memcpy(bytes, &value, 4);
    return put(buf, KW_INT, {bytes, 4}, name);
}

int kwl_put_dbl(std::span<char> buf, std::string_view name, double value) {
    char bytes[8];
    std::memcpy(bytes, &value, 8);
    return put(buf, KW_DOUBLE, {bytes, 8}, name);
}

int kwl_put_str(std::span<char> buf, std::string_view name, std::string_view value) {
    value = cut(value, KW_MAX_STRING);
    if (value.empty()) return 0;
    std::string bytes(1, static_cast<char>(value.size() + 1));
    bytes.append(value);
    bytes += '\0';
    return put(buf, KW_STRING, bytes, name);
}

int kwl_delete(std::span<char> buf, int indx) {
    kwl_item item;
    if (kwl_read(buf, indx, item) != 1) return 0;
    std::size_t pos = *position(buf, indx);
    auto size = static_cast<std::size_t>(size_at(buf, pos));
    auto rest = std::copy(buf.begin() + static_cast<std::ptrdiff_t>(pos + size), buf.end(),
                          buf.begin() + static_cast<std::ptrdiff_t>(pos));
    std::fill(rest, buf.end(), '\0');
    return 1;
}

void kwl_convert(std::span<char> buf, void (*int_routine)(void*), void (*double_routine)(void*)) {
    walk(buf, [&](const kwl_item& item, int, std::size_t pos) {
        if (item.type == KW_INT) int_routine(&buf[pos + 2]);
        if (item.type == KW_DOUBLE) double_routine(&buf[pos + 2]);
        return false;
    });
}

} // namespace norva
