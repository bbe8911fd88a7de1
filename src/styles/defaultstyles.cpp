// SPDX-License-Identifier: MIT
#include "styles/stylesheet.h"

#include <string>
#include <unordered_map>

namespace {

/// In the words of a style sheet; all its selectors are names of elements.
constexpr std::string_view DefaultSheet = R"(
html,body,div,section,article,main,header,footer,aside,center,details,summary,address,hgroup,fieldset,form,nav,
dialog,search,noscript,noframes,frameset,object,video,audio,canvas,map,figure,figcaption,p,legend,h1,h2,h3,h4,h5,
h6,pre,listing,xmp,plaintext,textarea,ul,ol,menu,dir,dl,dt,dd,blockquote,hr,iframe,frame,mtr,optgroup{display:block}
li{display:list-item}
table{display:table;font-size:inherit;text-indent:0}
thead,tbody,tfoot{display:table-row-group}
tr{display:table-row}
td,th{display:table-cell}
caption{display:table-caption;text-align:center}
head,script,style,template,title,meta,link,base,param,source,track,datalist,area{display:none}
slot{display:contents}
b,strong,th,h1,h2,h3,h4,h5,h6{font-weight:bold}
i,em,cite,dfn,var,address{font-style:italic}
code,tt,kbd,samp,pre,listing,xmp,plaintext,textarea{font-family:monospace}
pre,listing,xmp,plaintext,textarea{white-space:pre}
u,ins{text-decoration:underline}
s,strike,del{text-decoration:line-through}
sub{vertical-align:sub;font-size:smaller}
sup{vertical-align:super;font-size:smaller}
small{font-size:smaller}
big{font-size:larger}
h1{font-size:2em;margin:.67em 0}
h2{font-size:1.5em;margin:.83em 0}
h3{font-size:1.17em;margin:1em 0}
h4{margin:1.33em 0}
h5{font-size:.83em;margin:1.67em 0}
h6{font-size:.67em;margin:2.33em 0}
p,pre,dl,ul,ol,menu,dir{margin:1em 0}
blockquote,figure{margin:1em 40px}
dd{margin-left:40px}
ul,ol,menu,dir{padding-left:40px}
ol{list-style-type:decimal}
th,center{text-align:center}
)";

} // namespace

const StyleBlock* defaultStyle(std::string_view element)
{
    static const auto blocks = [] {
        std::unordered_map<std::string, std::vector<CssDeclaration>> written;
        for (auto& rule : readCss(DefaultSheet).rules) {
            for (const auto name : splitCss(rule.selectors, ',')) {
                auto& all = written[std::string(name)];
                all.insert(all.end(), rule.declarations.begin(), rule.declarations.end());
            }
        }
        std::unordered_map<std::string, StyleBlock> byName;
        for (const auto& [name, declarations] : written) {
            byName.emplace(name, declarations);
        }
        return byName;
    }();
    static const auto views = [] {
        std::unordered_map<std::string_view, const StyleBlock*> byName;
        for (const auto& [name, block] : blocks) {
            byName.emplace(name, &block);
        }
        return byName;
    }();
    const auto found = views.find(element);
    return found == views.end() ? nullptr : found->second;
}
