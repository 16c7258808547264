#pragma once

/// What the editor can do, as it has said when it began.
struct SqxLsClient {
    bool showsRelatedInformation = false;
    bool takesSnippets = false;  // in completions
    bool watchesFiles = false;
    bool answersConfiguration = false;
    bool showsDocuments = false;
    bool refreshesHints = false;
    bool refreshesTokens = false;
};
