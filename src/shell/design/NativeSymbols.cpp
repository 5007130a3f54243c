#include "shell/design/NativeSymbols.h"

#include <QHash>

using namespace Qt::StringLiterals;

namespace NativeSymbols {

namespace {

// The symbol names the navigation tables and the window use, and the glyph
// of the icon font that draws each. A row's icon name is the font's own name
// for the glyph, so a reader can check it against the font's codepoints.
constexpr Symbol symbolRows[] {
    { "sparkles"_L1, "auto_awesome"_L1, 0xe65f },
    { "gauge.with.dots.needle.67percent"_L1, "speed"_L1, 0xe9e4 },
    { "rectangle.3.group"_L1, "dashboard"_L1, 0xe871 },
    { "message"_L1, "chat_bubble_outline"_L1, 0xe0cb },
    { "phone"_L1, "call"_L1, 0xe0b0 },
    { "video"_L1, "videocam"_L1, 0xe04b },
    { "display"_L1, "screen_share"_L1, 0xe0e2 },
    { "envelope"_L1, "mail_outline"_L1, 0xe0e1 },
    { "calendar"_L1, "calendar_today"_L1, 0xe935 },
    { "briefcase"_L1, "work_outline"_L1, 0xe943 },
    { "checklist"_L1, "checklist"_L1, 0xe6b1 },
    { "lifepreserver"_L1, "support"_L1, 0xef73 },
    { "doc.text"_L1, "description"_L1, 0xe873 },
    { "person.2.crop.square.stack"_L1, "switch_account"_L1, 0xe9ed },
    { "globe"_L1, "language"_L1, 0xe894 },
    { "scope"_L1, "track_changes"_L1, 0xe8e1 },
    { "flame"_L1, "local_fire_department"_L1, 0xef55 },
    { "book.closed"_L1, "menu_book"_L1, 0xea19 },
    { "book"_L1, "menu_book"_L1, 0xea19 },
    { "creditcard"_L1, "credit_card"_L1, 0xe870 },
    { "person.crop.rectangle.stack"_L1, "badge"_L1, 0xea67 },
    { "building.2"_L1, "business"_L1, 0xe0af },
    { "square.and.pencil"_L1, "edit_note"_L1, 0xe745 },
    { "clock.arrow.circlepath"_L1, "history"_L1, 0xe889 },
    { "exclamationmark.triangle"_L1, "warning_amber"_L1, 0xf083 },
    { "person.3"_L1, "groups"_L1, 0xf233 },
    { "square.grid.2x2"_L1, "grid_view"_L1, 0xe9b0 },
    { "shippingbox"_L1, "local_shipping"_L1, 0xe558 },
    { "tray"_L1, "inbox"_L1, 0xe156 },
    { "waveform"_L1, "graphic_eq"_L1, 0xe1b8 },
    { "link"_L1, "link"_L1, 0xe157 },
    { "magnifyingglass"_L1, "search"_L1, 0xe8b6 },
    { "person.2"_L1, "people_outline"_L1, 0xe7fc },
    { "list.bullet.rectangle"_L1, "view_list"_L1, 0xe8ef },
    { "wrench.and.screwdriver"_L1, "build"_L1, 0xe869 },
    { "repeat"_L1, "repeat"_L1, 0xe040 },
    { "timer"_L1, "timer"_L1, 0xe425 },
    { "doc.plaintext"_L1, "article"_L1, 0xef42 },
    { "doc.richtext"_L1, "feed"_L1, 0xf009 },
    { "signature"_L1, "draw"_L1, 0xe746 },
    { "chart.pie"_L1, "pie_chart_outline"_L1, 0xf044 },
    { "arrow.left.arrow.right"_L1, "swap_horiz"_L1, 0xe8d4 },
    { "doc.text.magnifyingglass"_L1, "find_in_page"_L1, 0xe880 },
    { "cart"_L1, "shopping_cart"_L1, 0xe8cc },
    { "chart.bar.doc.horizontal"_L1, "assessment"_L1, 0xe85c },
    { "building.columns"_L1, "account_balance"_L1, 0xe84f },
    { "person.text.rectangle"_L1, "contact_page"_L1, 0xf22e },
    { "clock"_L1, "schedule"_L1, 0xe8b5 },
    { "dollarsign.circle"_L1, "paid"_L1, 0xf041 },
    { "photo.on.rectangle.angled"_L1, "collections"_L1, 0xe3b6 },
    { "person.badge.plus"_L1, "person_add_alt"_L1, 0xea4d },
    { "gearshape.2"_L1, "settings_suggest"_L1, 0xf05e },
    { "chart.line.uptrend.xyaxis"_L1, "trending_up"_L1, 0xe8e5 },
    { "person.crop.circle"_L1, "account_circle"_L1, 0xe853 },
    { "paintpalette"_L1, "palette"_L1, 0xe40a },
    { "person.badge.key"_L1, "admin_panel_settings"_L1, 0xef3d },
    { "lightbulb"_L1, "lightbulb_outline"_L1, 0xe90f },
    { "gearshape"_L1, "settings"_L1, 0xe8b8 },
    { "sidebar.left"_L1, "view_sidebar"_L1, 0xf114 },
    { "chevron.left"_L1, "chevron_left"_L1, 0xe5cb },
    { "chevron.right"_L1, "chevron_right"_L1, 0xe5cc },
    { "chevron.down"_L1, "expand_more"_L1, 0xe5cf },
    { "xmark"_L1, "close"_L1, 0xe5cd },
    { "checkmark"_L1, "check"_L1, 0xe5ca },
    { "plus"_L1, "add"_L1, 0xe145 },
    { "ellipsis"_L1, "more_horiz"_L1, 0xe5d3 },
    { "arrow.uturn.backward"_L1, "undo"_L1, 0xe166 },
    { "arrow.clockwise"_L1, "refresh"_L1, 0xe5d5 },
    { "rectangle.portrait.and.arrow.right"_L1, "logout"_L1, 0xe9ba },
    { "trash"_L1, "delete_outline"_L1, 0xe92e },
    { "exclamationmark.circle"_L1, "error_outline"_L1, 0xe001 },
    { "info.circle"_L1, "info_outline"_L1, 0xe88f },
    { "doc.on.doc"_L1, "content_copy"_L1, 0xe14d },
    { "arrow.right"_L1, "arrow_forward"_L1, 0xe5c8 },
    { "questionmark.circle"_L1, "help_outline"_L1, 0xe8fd },
    { "moon"_L1, "dark_mode"_L1, 0xe51c },
    { "sun.max"_L1, "light_mode"_L1, 0xe518 },
    { "circle.lefthalf.filled"_L1, "brightness_medium"_L1, 0xe1ae },
    { "bell"_L1, "notifications_none"_L1, 0xe7f5 },
    { "paperplane"_L1, "send"_L1, 0xe163 },
    { "pencil"_L1, "edit"_L1, 0xe3c9 },
    { "face.smiling"_L1, "mood"_L1, 0xe7f2 },
    { "bookmark"_L1, "bookmark_border"_L1, 0xe867 },
    { "play.fill"_L1, "play_arrow"_L1, 0xe037 },
    { "pause.fill"_L1, "pause"_L1, 0xe034 },
    { "phone.arrow.down.left"_L1, "call_received"_L1, 0xe0b5 },
    { "phone.arrow.up.right"_L1, "call_made"_L1, 0xe0b2 },
    { "phone.down"_L1, "phone_missed"_L1, 0xe61f },
    { "phone.connection"_L1, "phone_in_talk"_L1, 0xe61d },
    { "circle.grid.3x3"_L1, "dialpad"_L1, 0xe0bc },
};

} // namespace

std::span<const Symbol> all()
{
    return symbolRows;
}

std::optional<char16_t> codepoint(const QString &name)
{
    static const QHash<QString, char16_t> byName = [] {
        QHash<QString, char16_t> table;
        for (const Symbol &row : symbolRows)
            table.insert(row.name, row.codepoint);
        return table;
    }();
    const auto found = byName.constFind(name);
    if (found == byName.cend())
        return std::nullopt;
    return *found;
}

QString glyph(const QString &name)
{
    static constexpr char16_t unknown = 0xe8fd;
    return QString(QChar(codepoint(name).value_or(unknown)));
}

} // namespace NativeSymbols
