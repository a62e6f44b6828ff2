# The fonts of maps and 3D pictures, taken into the program: another version of them has other
# outlines and widths, so the files are known by their sums.
set(TERRAVO_FONTS_FOLDER /usr/share/fonts/truetype/liberation CACHE PATH
    "Folder of the Liberation fonts 1.07.4 (Debian 12: package fonts-liberation)")
option(TERRAVO_OTHER_FONTS "Take other versions too; pictures then differ from those of others" OFF)
set(TERRAVO_FONT_SUMS
    Sans-Regular f8ace1f892b2bd9dc1792ba7f097fa7588f84fed48321480e04de5390828221f
    Sans-Bold 361c61b82d575c5c35fd9157fda8b0194bcfcd0d88ea8521a4fb5dd53d33dddc
    Mono-Regular a2e642d350acb1c5e368f375db8a4ef5a2f4ff2b79056d8c3be8bd8a7e9fcb44
    Mono-Bold 267ae0b63fc67980d11fc4cbb630de84d845c6bf350988ec56766baf98706b8b)

function(terravo_add_fonts target)
    set(rest ${TERRAVO_FONT_SUMS})
    while(rest)
        list(POP_FRONT rest name expected)
        set(file ${TERRAVO_FONTS_FOLDER}/Liberation${name}.ttf)
        if(NOT EXISTS ${file})
            message(FATAL_ERROR "${file} is missing; TERRAVO_FONTS_FOLDER names its folder.")
        endif()
        file(SHA256 ${file} sum)
        if(NOT sum STREQUAL expected AND NOT TERRAVO_OTHER_FONTS)
            message(FATAL_ERROR "${file} is not of version 1.07.4: the maps would differ from those "
                "of other builds. TERRAVO_FONTS_FOLDER names a folder that has it, "
                "TERRAVO_OTHER_FONTS=ON takes this one.")
        endif()
        list(APPEND files ${file})
    endwhile()
    qt_add_resources(${target} fonts PREFIX /fonts BASE ${TERRAVO_FONTS_FOLDER} FILES ${files})
endfunction()
terravo_add_fonts(terravo_raster)
