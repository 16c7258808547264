#pragma once

/// The capabilities of the editor, from its first message.
struct SqxLsClient {
    bool showsRelatedInformation = false;
    bool watchesFiles = false;
    bool answersConfiguration = false;
    bool showsDocuments = false;
    bool refreshesHints = false;
    bool refreshesTokens = false;
};
