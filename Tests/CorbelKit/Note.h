#pragma once

#include "CorbelKit/Coding/Coding.h"

/// Some user data.
struct Note {
    explicit Note(std::string content, Platform::UUID identifier = Platform::UUID::random())
        : uuid(identifier)
        , text(std::move(content)) {}

    Note()
        : Note({}, Platform::UUID({})) {}

    static Note decode(const CorbelKit::Decoder& decoder) {
        const auto container = decoder.container();
        auto identifier = container.decode<Platform::UUID>("uuid");
        return Note(container.decode<std::string>("text"), identifier);
    }

    void encode(CorbelKit::Encoder& encoder) const {
        auto container = encoder.container();
        container.encode("uuid", uuid);
        container.encode("text", text);
    }

    Platform::UUID uuid;
    std::string text;
};

inline std::vector<std::string> textsOf(const std::vector<Note>& notes) {
    std::vector<std::string> texts;
    for (const auto& note : notes)
        texts.push_back(note.text);
    return texts;
}
