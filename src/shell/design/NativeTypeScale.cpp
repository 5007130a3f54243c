#include "shell/design/NativeTypeScale.h"

NativeTypeScale NativeTypeScale::scaled(double factor)
{
    const NativeTypeScale standard;
    return {
        .caption = standard.caption * factor,
        .footnote = standard.footnote * factor,
        .callout = standard.callout * factor,
        .body = standard.body * factor,
        .title3 = standard.title3 * factor,
        .title2 = standard.title2 * factor,
        .title1 = standard.title1 * factor,
    };
}
