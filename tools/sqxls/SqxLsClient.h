#pragma once

/// The capabilities of the editor that matter to the server, from the `initialize` request.
struct SqxLsClient {
    bool showsRelatedInformation = false;  // further places and texts of a diagnostic
    bool watchesFiles = false;             // can be asked to report changes of files on disk
    bool answersConfiguration = false;     // can be asked for the settings
    bool showsDocuments = false;           // can be asked to open an address
    bool refreshesHints = false;           // can be asked to request inlay hints again
    bool refreshesTokens = false;          // can be asked to request semantic tokens again
};
