#pragma once

#include <span>
#include <string>
#include <string_view>

#include "engine/pass_context.h"
#include "las/header_text.h"

/// Sections of a header out of the session's tables, and how a line of it is laid out.
namespace welvane {

/// The fields at the columns of the format. As laid down a line has 254 characters at most.
std::string laidOut(const PassContext& context, const HeaderField& fields, int extraColon = 0);

/// STRT, STOP, STEP and NULL, whose value stands in front of the colon in every version.
bool isDepthLine(std::string_view mnem);
/// LAS 1.2 carries the text of a ~Well line behind the colon, 2.0 in front of it.
void swapForVersions(HeaderField& fields, double inputVersion, double outputVersion);

/// ~Well of a filter in use, from wrd.
void writeWellOfFilter(PassContext& context, HeaderText& text, const std::string& title);
/// ~Curve from the curve table, behind its heads the comments.
void writeCurves(PassContext& context, HeaderText& text, const std::string& title,
                 std::span<const std::string> comments = {});
/// ~Parameter from parg of the header's slot, or of all when they are merged. As laid down nothing where the header's
/// file has no such section.
void writeParameters(PassContext& context, HeaderText& text, const std::string& title,
                     std::span<const std::string> comments = {});

}  // namespace welvane
