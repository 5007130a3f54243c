#pragma once

class WorkspaceServer;

// "GET /api/gifs?q=", "/api/gifs/:id/preview" and "/api/gifs/:id/file": the
// .gif files of the folder given with "--gif-folder", found by the words of
// their names. Without a folder the search answers `configured` false with
// a message.
namespace GifRoutes {

void add(WorkspaceServer &server);

} // namespace GifRoutes
