// String and list helpers against std::string models: insertion and
// deletion anywhere in a buffer (the inserted text may lie in the same
// buffer, even past the terminator), item lists, chained-string lists and
// the character set round trip.
#include <cstring>
#include <string>
#include <vector>

#include <vitrail/strings.h>

#include "check.h"

namespace {

std::vector<std::string> Items(const std::string &list, const char *separators) {
    std::vector<std::string> items(1);
    for (char c : list) std::strchr(separators, c) ? items.emplace_back() : items.back() += c;
    return items;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size < 4) return 0;
    const int32_t pos = int8_t(data[0]), from = data[1] % 64, cut = int8_t(data[2]);
    const int32_t room = data[3] % 65;
    char buf[64];
    std::memset(buf, 0, sizeof buf);
    std::memcpy(buf, data + 4, std::min<size_t>(size - 4, 63));
    const std::string dst = buf, ins = buf + from; // ins may overlap dst or lie past it
    const bool fits = !ins.empty() && int32_t(dst.size() + ins.size()) <= room - 1;
    std::string model = dst;
    if (fits) model.insert(pos < 0 ? 0 : std::min<size_t>(pos, dst.size()), ins);
    CHECK(chinsch(buf, room, buf + from, pos) == (fits ? int32_t(ins.size()) : 0));
    CHECK(model == buf);
    std::string del = buf;
    chdelch(buf, cut, pos);
    if (!del.empty() && cut >= 1 && size_t(cut) <= del.size())
        del.erase(pos < 0 ? 0 : std::min<size_t>(pos, del.size() - 1), cut);
    CHECK(del == buf);

    const std::vector<std::string> items = Items(buf, "+,-");
    CHECK(Teste_liste(buf) == int32_t(items.size()));
    for (size_t i = 0; i < items.size(); ++i) {
        CHECK(items[i].substr(0, 63) == Get_item_liste(buf, int32_t(i)));
        CHECK(Teste_item_liste(buf, items[i].data(), int32_t(items[i].size())) == 1);
    }
    // Chained list: cut at "+" and ",", it ends at its first empty item.
    char chained[66] = {};
    std::memcpy(chained, buf, std::strlen(buf));
    ChCh_Cut(chained);
    std::string joined;
    size_t count = 0;
    for (const std::string &item : Items(buf, "+,")) {
        if (item.empty()) break;
        joined += (count++ ? "+" : "") + item;
    }
    CHECK(ChCh_Count_Item(chained) == int32_t(count ? count : 1));
    ChCh_Bind(chained);
    CHECK(joined == chained);

    std::string text = buf, round = buf; // the letters both ways come back
    w2mstr(round.data());
    m2wstr(round.data());
    for (size_t i = 0; i < text.size(); ++i)
        if (std::strchr("\xB0\xE0\xE7\xE8\xE9", text[i]) || uint8_t(text[i]) < 0x80)
            CHECK(round[i] == text[i]);
    return 0;
}
