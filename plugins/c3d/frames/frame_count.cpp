#include "plugins/c3d/frames/frame_count.hpp"

#include <array>

#include "plugins/c3d/bytes/format_limits.hpp"

namespace c3d {

namespace {

/// A 32-bit number held as two words, the low one first. Some writers use reals or a single
/// element; all are understood.
std::optional<std::uint64_t> field_number(const parameter* item) {
    if (!item)
        return std::nullopt;
    const auto low = item->count(0);
    const auto high = item->count(1);
    if (!low || !high || item->type != element_type::integer)
        return low;
    return *low + 65536 * *high;
}

std::optional<std::uint64_t> trial_frames(const frame_claims& claims) {
    if (!claims.trial_first || !claims.trial_last || *claims.trial_last < *claims.trial_first) {
        return std::nullopt;
    }
    return *claims.trial_last - *claims.trial_first + 1;
}

/// The range holds for writers that count from 0, too. A range of 0 to 0 is an unused one.
std::optional<std::uint64_t> header_frames(const frame_claims& claims) {
    if (claims.header_last < claims.header_first || claims.header_last == 0)
        return std::nullopt;
    return std::uint64_t{claims.header_last} - claims.header_first + 1;
}

std::optional<std::uint64_t> above_zero(std::optional<std::uint64_t> count) {
    return count && *count > 0 ? count : std::nullopt;
}

/// A 16-bit count plus the multiple of 65,536 that fills the section.
std::optional<std::uint64_t> unwrapped(std::uint64_t frames, const frame_room& room) {
    const auto most = room.most();
    if (most <= frames)
        return std::nullopt;
    const auto candidate = frames + (most - frames) / 65536 * 65536;
    return candidate > frames && room.is_filled_by(candidate) ? std::optional(candidate)
                                                              : std::nullopt;
}

} // namespace

frame_claims frame_claims_of(const c3d_file& file) {
    return frame_claims_of(file.parameters, file.head.first_frame, file.head.last_frame);
}

frame_claims frame_claims_of(const parameter_table& parameters, std::uint16_t first,
                             std::uint16_t last) {
    frame_claims claims;
    claims.long_frames = above_zero(parameters.count("POINT", "LONG_FRAMES"));
    if (const auto* frames = parameters.find("POINT", "FRAMES")) {
        auto& claim = frames->type == element_type::real ? claims.real_frames : claims.word_frames;
        claim = frames->count(0);
    }
    claims.trial_first = field_number(parameters.find("TRIAL", "ACTUAL_START_FIELD"));
    claims.trial_last = field_number(parameters.find("TRIAL", "ACTUAL_END_FIELD"));
    claims.header_first = first;
    claims.header_last = last;
    return claims;
}

std::optional<frame_count> claimed_frames(const frame_claims& claims) {
    using enum count_reliability;
    if (claims.long_frames)
        return frame_count{*claims.long_frames, "POINT:LONG_FRAMES", exact};
    if (const auto frames = above_zero(claims.real_frames))
        return frame_count{*frames, "POINT:FRAMES", exact};
    // Before TRIAL, in which files that were cut out of a longer recording often keep its range.
    const bool is_saturated = claims.word_frames == largest_word;
    if (const auto frames = above_zero(claims.word_frames); frames && !is_saturated)
        return frame_count{*frames, "POINT:FRAMES", may_be_wrapped};
    if (const auto frames = trial_frames(claims))
        return frame_count{*frames, "TRIAL", exact};
    if (is_saturated)
        return frame_count{largest_word, "POINT:FRAMES", saturated};
    // A FRAMES of 0 beside a header range comes from writers that count no frames without points.
    if (const auto frames = header_frames(claims)) {
        const bool at_end = claims.header_last == largest_word;
        return frame_count{*frames, "the header", at_end ? saturated : may_be_wrapped};
    }
    if (claims.word_frames || claims.real_frames)
        return frame_count{0, "POINT:FRAMES", exact};
    return std::nullopt;
}

std::optional<frame_count> count_that_fills(const frame_claims& claims, const frame_room& room) {
    const std::array<std::pair<std::optional<std::uint64_t>, const char*>, 5> all = {{
        {claims.long_frames, "POINT:LONG_FRAMES"},
        {claims.real_frames, "POINT:FRAMES"},
        {claims.word_frames, "POINT:FRAMES"},
        {trial_frames(claims), "TRIAL"},
        {header_frames(claims), "the header"},
    }};
    for (const auto& [frames, source] : all) {
        if (frames && *frames > 0 && room.is_filled_by(*frames))
            return frame_count{*frames, source};
    }
    const auto claimed = claimed_frames(claims);
    if (!claimed || claimed->reliability == count_reliability::exact)
        return std::nullopt;
    const auto frames = unwrapped(claimed->frames, room);
    return frames ? std::optional(frame_count{*frames, "the file's length"}) : std::nullopt;
}

std::uint64_t reconciled_frames(const frame_claims& claims, const frame_room& room,
                                schema::warnings& notes) {
    const auto most = room.most();
    const auto claimed = claimed_frames(claims);
    if (!claimed) {
        notes.add("nothing says how many frames there are; the file's length gives {}",
                  room.most_with_content());
        return room.most_with_content();
    }
    if (claimed->frames > most) {
        notes.add("{} says {} frames, the file holds {}; these are read", claimed->source,
                  claimed->frames, most);
        return most;
    }
    if (room.is_filled_by(claimed->frames))
        return claimed->frames;
    if (const auto filling = count_that_fills(claims, room)) {
        notes.add("{} says {} frames, {} says {}; the latter fill the file and are read",
                  claimed->source, claimed->frames, filling->source, filling->frames);
        return filling->frames;
    }
    if (claimed->reliability == count_reliability::saturated) {
        const auto frames = std::max(claimed->frames, room.most_with_content());
        notes.add("{} says {} frames, which is as far as 16 bits count; the file's length gives {}",
                  claimed->source, claimed->frames, frames);
        return frames;
    }
    notes.add("{} says {} frames, the file has room for {}; the former are read", claimed->source,
              claimed->frames, most);
    return claimed->frames;
}

std::uint64_t first_frame_number(const frame_claims& claims, std::uint64_t frames) {
    const auto trial_first = above_zero(claims.trial_first);
    const bool trial_holds = trial_first && trial_frames(claims) == frames;
    // The header's words end at 65,535, and long recordings are advised to carry the range 1 to
    // 65,535 there.
    if (trial_holds && header_frames(claims) != frames)
        return *trial_first;
    // A writer that counts from 0.
    return claims.header_first == 0 ? 1 : claims.header_first;
}

} // namespace c3d
