// Chained-string lists: zero-terminated items one after another in a
// caller's buffer, closed by an extra zero byte ("a" 0 "bc" 0 0).
//
//   Routine                     Reads / changes
//   ChCh_Put_00                 writes the closing zero after a string
//   ChCh_Is_00, _Get_Next_Item  walk one item
//   ChCh_Count_Item             walks the list
//   ChCh_Cut, _Cut_sep          separators -> zeros
//   ChCh_Bind, _Bind_sep        inner terminators -> separator
//   ChCh_Delete_Item            moves the rest of the list down over an item
//   ChCh_*_Missing_File         tests each item as a file of a folder
//
// Null pointers are ignored. Lists are trusted to be closed within their
// buffers, as their layout requires.
#include <cstring>
#include <string>

#include <vitrail/files.h>
#include <vitrail/strings.h>

namespace {

// The closing zero of the list that `item` belongs to (from `item` on).
char *ListEnd(char *item) {
    while (*item) item += std::strlen(item) + 1;
    return item;
}

// 1 when "folder:name" (or "name" for an empty folder) is an existing file.
bool FileExists(const char *folder, const char *name) {
    std::string path = folder ? folder : "";
    if (!path.empty()) path += ':';
    path += name;
    return File_Is_Existing(path.c_str()) == 1;
}

} // namespace

extern "C" {

VITRAIL_API void ChCh_Put_00(char *buf, int32_t size) {
    if (!buf || size <= 0) return;
    size_t len = strnlen(buf, size_t(size));
    if (size_t(size) - 1 <= len) {
        buf[size - 1] = '\0';
        if (size > 1) buf[size - 2] = '\0';
    } else {
        buf[len + 1] = '\0';
    }
}

VITRAIL_API int32_t ChCh_Is_00(const char *item) {
    if (!item) return 1;
    return item[0] == '\0' || item[std::strlen(item) + 1] == '\0' ? 1 : 0;
}

VITRAIL_API char *ChCh_Get_Next_Item(char *item) {
    return ChCh_Is_00(item) ? item : item + std::strlen(item) + 1;
}

VITRAIL_API int32_t ChCh_Count_Item(const char *list) {
    if (!list) return 0;
    int32_t n = 1;
    for (; !ChCh_Is_00(list); ++n) list += std::strlen(list) + 1;
    return n;
}

VITRAIL_API void ChCh_Cut_sep(char *s, char sep) {
    for (; s && *s; ++s)
        if (*s == sep) *s = '\0';
}

VITRAIL_API void ChCh_Cut(char *s) {
    for (; s && *s; ++s)
        if (*s == '+' || *s == ',') *s = '\0';
}

VITRAIL_API void ChCh_Bind_sep(char *list, char sep) {
    if (!list || !*list) return;
    for (char *p = list; !ChCh_Is_00(p);) {
        size_t len = std::strlen(p);
        p[len] = sep;
        p += len + 1;
    }
}

VITRAIL_API void ChCh_Bind(char *list) {
    ChCh_Bind_sep(list, '+');
}

VITRAIL_API void ChCh_Delete_Item(char *list) {
    if (!list || !*list) return;
    char *second = list + std::strlen(list) + 1;
    char *end = ListEnd(second);
    std::memmove(list, second, size_t(end - second) + 1);
    if (!list[0]) list[1] = '\0'; // inside the removed item: the list stays closed
}

VITRAIL_API int32_t ChCh_Detect_Missing_File(const char *folder, char *list, char **item) {
    if (!list) return 0;
    for (char *p = list;; p = ChCh_Get_Next_Item(p)) {
        if (!FileExists(folder, p)) {
            if (item) *item = p;
            return 1;
        }
        if (ChCh_Is_00(p)) return 0;
    }
}

VITRAIL_API int32_t ChCh_Remove_Missing_File(const char *folder, char *list) {
    if (!list) return 0;
    int32_t removed = 0;
    for (char *p = list;;) {
        bool last = ChCh_Is_00(p);
        if (FileExists(folder, p)) {
            if (last) break;
            p = ChCh_Get_Next_Item(p);
            continue;
        }
        if (*p) ++removed;
        ChCh_Delete_Item(p);
        if (last) break;
    }
    return removed;
}

} // extern "C"
