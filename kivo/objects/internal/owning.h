#pragma once

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "kivo/objects/vector_obj.h"
#include "kivo/objects/wizard_map.h"
#include "kivo/toolkit/records/note.h"
#include "kivo/toolkit/records/obj.h"

// How something takes the place of a record, and which records go once though several names lead to
// them. The public fields that hold records are plain pointers, as hosts read and write them, so
// that it is noted on each record who made it.
//
// One order everywhere: first everything that memory may be short for, then the replacement, which
// cannot fail. Until then the new record belongs to its unique_ptr, and from then on to its place.
class KIVO_OWNING {
public:
    using Maker = std::uint32_t;
    using Records = std::vector<KIVO_OBJ*>;

    static constexpr Maker kHost = 0;
    static constexpr Maker kVector = 1;  // what add_vector_display_format made
    // What a store made; each has a number of its own.
    static Maker next_store();

    // Puts a piece that the store made into the place that holds "slot". The piece that stood there
    // is not deleted: when the store made it, it goes to "replaced", else it is the host's.
    template <class Piece>
    static void replace(Piece*& slot, std::unique_ptr<Piece> piece, Maker store,
                        Records& replaced) {
        keep(slot, store, replaced);
        if (piece != nullptr) {
            piece->note_.maker_ = store;
        }
        slot = piece.release();
    }

    // The same where the holder keeps what was replaced: a vector or a wizard map.
    template <class Holder, class Piece>
    static void replace(Holder& holder, Piece* Holder::*slot, std::unique_ptr<Piece> piece,
                        Maker store) {
        replace(holder.*slot, std::move(piece), store, holder.replaced_);
    }

    // Puts a display format that "maker" made in the place of an earlier one of its port. One that
    // the vector itself made is deleted, one that a store made is kept, of a host's nothing is
    // done.
    static void replace_format(KIVO_VECTOR_OBJ& vector,
                               std::unique_ptr<KIVO_VECTOR_DISPLAY_OBJ> format, Maker maker);

    // What was replaced in a vector or a wizard map, and is still to be deleted.
    template <class Holder>
    static Records& replaced(Holder& holder) {
        return holder.replaced_;
    }

    // Notes that the record is going to be deleted. False when that was noted before. A record of a
    // class of the host's own, derived from KIVO_OBJ itself, bears no note: always true.
    static bool is_first_to_go(KIVO_OBJ* record);

private:
    static constexpr Maker kGoing = 0xFFFFFFFF;
    static constexpr Maker kFirstStore = 2;

    template <class Record>
    static Maker* maker_if(KIVO_OBJ* record) {
        auto* const found = dynamic_cast<Record*>(record);
        return found == nullptr ? nullptr : &found->note_.maker_;
    }

    template <class Piece>
    static void keep(Piece* piece, Maker store, Records& replaced) {
        if (piece != nullptr && piece->note_.maker_ == store) {
            replaced.push_back(piece);
        }
    }
};
