# Completion of qxconf for bash:  . packaging/qxconf.bash

_qxconf() {
    local commands='identify upload download show sheet diff validate defaults rom chipcard param convert
        layer position codepage prefs test-drive recover backup receipts batch'
    local globals='--driver --keyboard --model --layouts --layout --settings --trace --json --help
        --version'
    local sections='commonKeyboard magnetCard barcode freeProgKeys funcKeys4610 funcKeys4620
        funcKeys4630 layeredFuncKeys pos'
    local symbologies='EAN UPC Code39 Code128 CodaBar Code25_Overlapped Code25_Industrial
        Code25_Matrix Code93 Code11 Code16K MSI Plessey'
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
    local command= sub= i
    for ((i = 1; i < COMP_CWORD; i++)); do
        case ${COMP_WORDS[i]} in
        --driver | --keyboard | --model | --layouts | --layout | --settings | -o | --output | --date | \
            --set | --layer | --track? | --wrong-* | --symbology | --reader) ((i++)) ;;
        -*) ;;
        *) if [ -z "$command" ]; then command=${COMP_WORDS[i]}; else sub=${sub:-${COMP_WORDS[i]}}; fi ;;
        esac
    done

    COMPREPLY=()
    case $before in
    --model) COMPREPLY=($(compgen -W 'full magnet x1-4620' -f -- "$word")); return ;;
    --layout) COMPREPLY=($(compgen -W 'us.qxl uk.qxl german.qxl french.qxl spanish.qxl' -- "$word")); return ;;
    --symbology) COMPREPLY=($(compgen -W "$symbologies" -- "$word")); return ;;
    --layouts) COMPREPLY=($(compgen -d -- "$word")); return ;;
    --driver | --keyboard | --settings | -o | --output) COMPREPLY=($(compgen -f -- "$word")); return ;;
    esac
    if [[ $word == -* ]]; then
        case $command in
        upload) globals+=' --output --no-identifier' ;;
        defaults) globals+=' --output' ;;
        sheet) globals+=' --output --date' ;;
        download) globals+=' --dry-run --full --no-verify --skip-absent --set' ;;
        validate | diff) globals+=' --set' ;;
        batch) globals+=' --bench --dry-run --jobs --only --skip-absent --timeout' ;;
        recover) globals+=' --finish --rollback --forget --list' ;;
        backup) case $sub in
            show) globals+=' --output' ;;
            restore) globals+=' --other-keyboard' ;;
            esac ;;
        position) globals+=' --count --seconds' ;;
        chipcard) globals+=' --baud --port' ;;
        test-drive) case $sub in
            function) globals+=' --layer' ;;
            swipe) globals+=' --track1 --track2 --track3 --track4 --wrong-lrc --wrong-last-char' ;;
            scan) globals+=' --symbology --reader' ;;
            esac ;;
        esac
        COMPREPLY=($(compgen -W "$globals" -- "$word"))
        return
    fi
    case $command in
    '') COMPREPLY=($(compgen -W "$commands" -- "$word")) ;;
    show) COMPREPLY=($(compgen -W "$sections" -- "$word")) ;;
    layer) COMPREPLY=($(compgen -W '0 1 2 3 4 5 6 7 8 9' -- "$word")) ;;
    rom | chipcard | param) [ -n "$sub" ] && COMPREPLY=($(compgen -f -- "$word")) ||
        COMPREPLY=($(compgen -W 'save load' -- "$word")) ;;
    position) COMPREPLY=($(compgen -W 'watch' -- "$word")) ;;
    test-drive) [ -n "$sub" ] || COMPREPLY=($(compgen -W 'key function pos swipe scan' -- "$word")) ;;
    recover | receipts) ;;
    backup) case $sub in
        '') COMPREPLY=($(compgen -W 'list show restore' -- "$word")) ;;
        show | restore) COMPREPLY=($(compgen -W "$(qxconf backup list 2>/dev/null | awk '$1 ~ "/" { print $1 }')" -- "$word")) ;;
        esac ;;
    codepage) [ -n "$sub" ] && COMPREPLY=($(compgen -f -- "$word")) ||
        COMPREPLY=($(compgen -W 'compare' -- "$word")) ;;
    prefs) case $sub in
        '') COMPREPLY=($(compgen -W 'list get set' -- "$word")) ;;
        get | set) COMPREPLY=($(compgen -W "$(qxconf prefs list 2>/dev/null | sed 's/ .*//')" -- "$word")) ;;
        esac ;;
    *) COMPREPLY=($(compgen -f -- "$word")) ;;
    esac
}
complete -o filenames -F _qxconf qxconf
